#ifndef TREE800_TESTS_SUPPORT_JSON_TREE_H
#define TREE800_TESTS_SUPPORT_JSON_TREE_H

#include "support/tree_builder.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

/// Trees of penguin species that another program grew and described as JSON, with the data and
/// where that program says every row ends.
namespace tree_800::test {

inline nlohmann::json ReadReference(std::string const& name) {
    return nlohmann::json::parse(std::ifstream(TREE800_TEST_DATA_DIR "/" + name + ".json"));
}

/// The observations one after the other; null is a missing value.
inline std::vector<double> ReadRows(nlohmann::json const& rows) {
    std::vector<double> values;
    for (auto const& row : rows) {
        for (auto const& value : row) {
            values.push_back(value.is_null() ? systemMissingValue() : value.get<double>());
        }
    }
    return values;
}

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
    if (!json.at("leaf")) {
        auto const& children = json.at("children");
        auto const& surrogates = json.at("surrogates");
        node = Split(ReadRule(json.at("competitors")[0]), ReadNode(nodes, children[0]),
                     ReadNode(nodes, children[1]));
        node->GetCompetitorImp(0)->SetDumbRule(json.at("majority"), 0.5);
        node->SetNumSurrogates(static_cast<unsigned int>(surrogates.size()));
        for (unsigned int pos = 0; pos < surrogates.size(); ++pos) {
            node->SetSurrogate(pos, ReadRule(surrogates[pos]).release());
        }
    }
    node->SetId(id);
    return node;
}

}  // namespace tree_800::test

#endif
