#include "fuzz/rule_model.h"

#include <tuple>

namespace tree_800::fuzz {
namespace {

constexpr int NumPredictors = 2;

std::vector<int> CodesOf(NValueSet const& set) {
    std::vector<int> codes;
    std::unique_ptr<NValueSetIter> const walk(set.GetIterator());
    while (walk->Advance()) {
        codes.push_back(walk->GetData());
    }
    return codes;
}

struct Subject {
    RuleModel model;
    std::unique_ptr<SplitRuleImp> rule;
};

void CheckBase(SplitRuleImp const& rule, RuleModel const& model) {
    Check(rule.IsOrdered() == model.isOrdered, "IsOrdered");
    Check(rule.GetPredictorIndex() == model.predictor, "GetPredictorIndex");
    Check(rule.GetNumChildren() == model.NumChildren(), "GetNumChildren");
    Check(rule.GetMissingValueMapping() == model.missing, "GetMissingValueMapping");
    Check(rule.GetDumbChildPos() == model.dumb, "GetDumbChildPos");
    Check(rule.GetCreationFlags() == model.properties, "GetCreationFlags");
}

void CheckOrdered(OSplitRule& rule, RuleModel& model) {
    Check(rule.IsValid() == model.IsValid(), "IsValid");
    Check(rule.IsValidBinary() == model.IsValidBinary(), "IsValidBinary");
    Check(rule.IsStandard() == !(model.IsValidBinary() && model.upper == 0), "IsStandard");
    Check(Same(rule.GetMissingValue(), model.missingCode), "GetMissingValue");
    Check(rule.GetUpperChild() == model.upper, "GetUpperChild");
    Check(rule.GetNumCutPoints() == static_cast<int>(model.cuts.size()), "GetNumCutPoints");
    Check(Same(rule.GetCutPoint(),
               model.cuts.empty() ? systemMissingValue() : model.cuts.front().cutValue),
          "GetCutPoint");
    for (int i = 0; i < rule.GetNumCutPoints(); ++i) {
        auto const& item = rule.GetCutPointItem(i);
        auto const& twin = model.cuts[static_cast<std::size_t>(i)];
        Check(Same(item.cutValue, twin.cutValue) && item.child == twin.child &&
                  item.cutPointAbove == twin.cutPointAbove,
              "a cut point holds what it was given");
        Check(std::isnan(item.cutValue) == (rule.IsPresent(item.cutValue) == nullptr), "IsPresent");
    }
}

/// Everything that an interval answers about its ends.
auto EndsOf(OValueSet const& set) {
    return std::tuple(set.IsBoundedLeft(), set.IsOpenLeft(), set.IsBoundedRight(),
                      set.IsOpenRight());
}

/// The first interval of the child; null when it has none.
std::unique_ptr<OValueSet> IntervalOf(RuleModel const& model, int child) {
    auto const& cuts = model.cuts;
    auto const end = child == model.upper
                         ? cuts.end()
                         : std::find_if(cuts.begin(), cuts.end(),
                                        [child](auto const& cut) { return cut.child == child; });
    if (!model.IsValid() || (end == cuts.end() && child != model.upper)) {
        return nullptr;
    }
    auto interval = std::make_unique<OValueSet>();
    if (end != cuts.begin()) {
        interval->SetLeftEnd((end - 1)->cutValue);
        interval->SetOpenLeft(!(end - 1)->cutPointAbove);
    }
    interval->SetBoundedRight(false);
    if (end != cuts.end()) {
        interval->SetRightEnd(end->cutValue);
        interval->SetOpenRight(end->cutPointAbove);
    }
    return interval;
}

void CheckMappedValues(SplitRuleImp const& rule, RuleModel const& model, int child) {
    std::unique_ptr<ValueSet> const values(rule.GetMappedValues(child));
    if (model.isOrdered) {
        auto const* const interval = dynamic_cast<OValueSet*>(values.get());
        auto const expected = IntervalOf(model, child);
        Check((values != nullptr) == (expected != nullptr), "GetMappedValues");
        Check(expected == nullptr || (EndsOf(*interval) == EndsOf(*expected) &&
                                      Same(interval->GetLeftEnd(), expected->GetLeftEnd()) &&
                                      Same(interval->GetRightEnd(), expected->GetRightEnd())),
              "the interval of a child");
        return;
    }
    std::vector<int> expected;
    for (int code = 0; code < model.NumCodes(); ++code) {
        if (model.Child(code) == child) {
            expected.push_back(code);
        }
    }
    auto const* const codes = dynamic_cast<NValueSet*>(values.get());
    Check((values != nullptr) == !expected.empty(), "GetMappedValues");
    Check(expected.empty() || CodesOf(*codes) == expected, "the codes of a child");
}

void CheckRule(Input& input, Subject& subject) {
    auto& [model, rule] = subject;
    CheckBase(*rule, model);
    for (int child = -2; child <= model.NumChildren(); ++child) {
        CheckMappedValues(*rule, model, child);
    }
    std::vector<double> values{input.Number(), model.missingCode, systemMissingValue(),
                               std::nan(""),   -GetInfinity(),    GetInfinity()};
    for (int half = -3; half < 48; ++half) {
        values.push_back(0.5 * half);
    }
    for (RuleModel::Cut const& cut : model.cuts) {
        for (double const step : {-1e300, cut.cutValue, 1e300}) {
            values.push_back(std::nextafter(cut.cutValue, step));
        }
    }
    for (double const x : values) {
        Check(rule->Classify(x) == model.Classify(x), "Classify");
    }
    if (model.isOrdered) {
        CheckOrdered(dynamic_cast<OSplitRule&>(*rule), model);
    }
    for (int code = -2; !model.isOrdered && code < 24; ++code) {
        Check(dynamic_cast<NSplitRule&>(*rule).GetCatMapping(code) == model.Child(code),
              "GetCatMapping");
    }
}

int Compared(RuleModel const& a, RuleModel const& b) {
    if (a.predictor != b.predictor) {
        return 2;
    }
    if (a.isOrdered != b.isOrdered || (a.isOrdered && a.missingCode != b.missingCode)) {
        return 3;
    }
    bool differ = a.missing != b.missing || a.upper != b.upper || a.cuts.size() != b.cuts.size();
    for (std::size_t i = 0; !differ && i < a.cuts.size(); ++i) {
        differ = a.cuts[i].child != b.cuts[i].child ||
                 std::abs(a.cuts[i].cutValue - b.cuts[i].cutValue) > 1e-12;
    }
    for (int code = 0; code < std::max(a.NumCodes(), b.NumCodes()); ++code) {
        if ((a.Child(code) < 0) != (b.Child(code) < 0) && b.NumChildren() != 0) {
            return 3;
        }
        differ = differ || a.Child(code) != b.Child(code);
    }
    return differ ? 1 : 0;
}

void CopyMappings(Subject& to, Subject const& from) {
    bool const isSameKind = to.model.isOrdered == from.model.isOrdered;
    Check(to.rule->CopyMappings(*from.rule) == isSameKind, "CopyMappings");
    if (isSameKind) {
        to.model.cuts = from.model.cuts;
        to.model.upper = from.model.upper;
        to.model.childOfCode = from.model.childOfCode;
        to.model.missing = from.model.missing;
    }
}

void MakeEmptyClone(Subject& to, Subject const& from) {
    RuleModel model;
    model.isOrdered = from.model.isOrdered;
    model.predictor = from.model.predictor;
    model.missingCode = from.model.missingCode;
    to = {model, std::unique_ptr<SplitRuleImp>(from.rule->EmptyClone())};
}

}  // namespace

void DriveSplitRules(Input& input) {
    Subject subjects[3];
    for (Subject& subject : subjects) {
        subject.model = DrawEmptyRule(input, NumPredictors);
        subject.rule = subject.model.NewRule();
    }
    for (int step = 0; step < 60 && !input.IsUsedUp(); ++step) {
        Subject& subject = input.Pick(subjects);
        Subject const& other = input.Pick(subjects);
        switch (input.Draw(0, 12)) {
            case 0:
                CopyMappings(subject, other);
                break;
            case 1:
                subject = {other.model, std::unique_ptr<SplitRuleImp>(other.rule->Clone())};
                break;
            case 2:
                MakeEmptyClone(subject, other);
                break;
            default:
                ChangeRule(input, *subject.rule, subject.model);
        }
        CheckRule(input, subject);
        Check(subject.rule->Compare(*other.rule) == Compared(subject.model, other.model),
              "Compare");
        Check(other.rule->Compare(*subject.rule) == Compared(other.model, subject.model),
              "Compare");
    }
}

}  // namespace tree_800::fuzz
