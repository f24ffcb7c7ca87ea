#ifndef TREE800_TESTS_SUPPORT_JSON_TREE_H
#define TREE800_TESTS_SUPPORT_JSON_TREE_H

#include "support/tree_builder.h"

#include <nlohmann/json.hpp>

#include <algorithm>

/// Rebuilds trees that another program grew and described as JSON.
namespace tree_800::test {

inline std::unique_ptr<SplitRuleImp> ReadRule(nlohmann::json const& json) {
    int const predictor = json.at("predictor");
    if (json.at("kind") == "nominal") {
        return Codes(predictor, json.at("child"));
    }
    auto rule = Cut(predictor, json.at("cut"));
    if (json.at("below") == 1) {
        rule->SetReverse();
    }
    return rule;
}

/// The node with this id in an array of nodes, and all below it.
inline std::unique_ptr<NodeImp> ReadNode(nlohmann::json const& nodes, unsigned int id) {
    auto const& json =
        *std::find_if(nodes.begin(), nodes.end(), [id](auto const& n) { return n.at("id") == id; });
    auto node = Leaf(json.at("prediction"), json.at("counts"));
    node->SetId(id);
    if (json.at("leaf")) {
        return node;
    }
    auto const numRules = [&json](char const* list) {
        return static_cast<unsigned int>(json.at(list).size());
    };
    node->SetNumCompetitors(numRules("competitors"));
    for (unsigned int pos = 0; pos < numRules("competitors"); ++pos) {
        node->SetCompetitor(pos, ReadRule(json.at("competitors")[pos]).release());
    }
    node->GetCompetitorImp(0)->SetDumbRule(json.at("majority"), 0.5);
    node->SetNumSurrogates(numRules("surrogates"));
    for (unsigned int pos = 0; pos < numRules("surrogates"); ++pos) {
        node->SetSurrogate(pos, ReadRule(json.at("surrogates")[pos]).release());
    }
    node->SetNumChildren(2);
    for (unsigned int pos = 0; pos < 2; ++pos) {
        node->SetChild(pos, ReadNode(nodes, json.at("children")[pos]).release());
    }
    return node;
}

/// One observation; null is a missing value.
inline std::vector<double> ReadRow(nlohmann::json const& json) {
    std::vector<double> row;
    for (auto const& value : json) {
        row.push_back(value.is_null() ? systemMissingValue() : value.get<double>());
    }
    return row;
}

}  // namespace tree_800::test

#endif
