#include "fuzz/rule_model.h"

namespace tree_800::fuzz {
namespace {

constexpr int HighestCode = 20;
constexpr int HighestChild = 3;

int DrawChild(Input& input, int low) { return input.Draw(low, input.Flag() ? 1 : HighestChild); }

OValueSet DrawInterval(Input& input) {
    OValueSet set;
    for (int n = input.Draw(0, 4); n > 0; --n) {
        bool const flag = input.Flag();
        auto const setLeft = [&] {
            set.SetLeftEnd(input.Number());
            set.SetOpenLeft(flag);
        };
        auto const setRight = [&] {
            set.SetRightEnd(input.Number());
            set.SetOpenRight(flag);
        };
        DoOneOf(
            input, setLeft, setLeft, setRight, setRight, [&] { set.SetBoundedLeft(flag); },
            [&] { set.SetBoundedRight(flag); }, [&] { set.Empty(); });
    }
    return set;
}

void ChangeOrdered(Input& input, OSplitRule& rule, RuleModel& model) {
    auto const setCutPoint = [&] {
        double const cut = input.Number();
        rule.SetCutPoint(cut);
        if (model.cuts.empty()) {
            model.cuts.push_back({cut, 0, false});
            model.upper = 1;
        }
        model.cuts.front().cutValue = cut;
    };
    auto const turn = [&] {
        bool const isStandard = input.Flag();
        isStandard ? rule.SetStandard() : rule.SetReverse();
        if (model.IsValidBinary()) {
            model.cuts.front().child = isStandard ? 0 : 1;
            model.upper = isStandard ? 1 : 0;
        }
    };
    auto const insert = [&] {
        OValueSet const interval = DrawInterval(input);
        bool const useLeft = input.Flag();
        rule.InsertCutPoint(interval, useLeft);
        model.InsertCut(interval, useLeft);
    };
    auto const changeCut = [&] {
        double const value = model.cuts.empty() ? 0.0 : input.Pick(model.cuts).cutValue;
        OSplitRule::OSplitRuleItem* const item = rule.IsPresent(value);
        RuleModel::Cut* const twin = model.Find(value);
        Check((item != nullptr) == (twin != nullptr), "IsPresent finds the cut point");
        if (twin != nullptr) {
            item->child = twin->child = DrawChild(input, -1);
            item->cutPointAbove = twin->cutPointAbove = input.Flag();
        }
    };
    auto const add = [&] {
        OValueSet const interval = DrawInterval(input);
        Check(rule.IsValidInterval(interval) == model.Accepts(interval), "IsValidInterval");
        Check(rule.AddMappedValues(interval) == model.Add(interval), "AddMappedValues");
    };
    DoOneOf(input, setCutPoint, turn, turn, insert, changeCut, add, add);
}

void ChangeNominal(Input& input, NSplitRule& rule, RuleModel& model) {
    if (input.Flag()) {
        int const code = input.Draw(-1, HighestCode);
        int const child = DrawChild(input, -2);
        rule.SetCatMapping(code, child);
        model.Map(code, child);
        return;
    }
    int const newChild = model.NumChildren();
    NValueSet codes;
    for (int n = input.Draw(0, 4); n > 0; --n) {
        int const code = input.Draw(-2, HighestCode);
        codes.Add(code);
        model.Map(code, newChild);
    }
    Check(rule.AddMappedValues(codes), "AddMappedValues");
}

void ChangeBase(Input& input, SplitRuleImp& rule, RuleModel& model) {
    auto const setProperty = [&] {
        int const flag = input.Draw(0, 7);
        rule.SetProperty(static_cast<SplitRulePropertyFlag>(flag));
        model.properties = ((flag & 3) != 0 ? model.properties & ~3 : model.properties) | flag;
    };
    auto const mapMissing = [&] {
        bool const isNew = input.Flag();
        rule.AddMissingValueMapping(isNew);
        model.missing = model.NumChildren() - (isNew ? 0 : 1);
    };
    auto const setDumb = [&] {
        model.dumb = DrawChild(input, -2);
        rule.SetDumbRule(model.dumb, 0.5);
    };
    auto const reorder = [&] {
        std::vector<int> newPos(static_cast<std::size_t>(std::max(model.NumChildren(), 4)));
        if (model.CanReorder(static_cast<int>(newPos.size()))) {
            std::generate(newPos.begin(), newPos.end(),
                          [&input] { return input.Draw(0, HighestChild); });
            rule.ReorderMappings(newPos);
            model.Reorder(newPos);
        }
    };
    DoOneOf(input, setProperty, mapMissing, setDumb, setDumb, reorder);
}

}  // namespace

RuleModel DrawEmptyRule(Input& input, int numPredictors) {
    RuleModel model;
    model.isOrdered = input.Flag();
    model.predictor = input.Draw(0, numPredictors - 1);
    if (!model.isOrdered) {
        model.childOfCode.assign(input.Index(5), -1);
    } else if (input.Flag()) {
        model.missingCode = input.Number();
    }
    return model;
}

void ChangeRule(Input& input, SplitRuleImp& rule, RuleModel& model) {
    if (input.Draw(0, 2) == 0) {
        ChangeBase(input, rule, model);
    } else if (model.isOrdered) {
        ChangeOrdered(input, dynamic_cast<OSplitRule&>(rule), model);
    } else {
        ChangeNominal(input, dynamic_cast<NSplitRule&>(rule), model);
    }
}

}  // namespace tree_800::fuzz
