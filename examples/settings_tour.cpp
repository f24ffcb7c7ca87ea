/// What a grower reads: describes the variables, makes the settings of all five algorithms, and
/// shows which numbers they accept and what a copy from one kind to another carries over.

#include <tree/tree.h>

#include <exception>
#include <iomanip>
#include <iostream>
#include <optional>
#include <type_traits>

namespace {

using namespace tree_800;

char const* NameOf(AlgSettings const& settings) {
    char const* const names[] = {"regression CART", "classification CART", "regression CHAID",
                                 "classification CHAID", "classification QUEST"};
    return names[settings.GetType()];
}

/// Settings clone the core settings, which must therefore be complete: a target, and an island and
/// numbers to predict it from.
template <typename Imp>
Imp Make(int numPredictors) {
    CoreSettingsImp core;
    if (!std::is_same_v<Imp, RCartSettingsImp> && !std::is_same_v<Imp, RChaidSettingsImp>) {
        core.GetTarget()->SetMeasurementLevel(global_800::Nominal);
        core.GetTarget()->SetNumValues(3);
    }
    VariableSettings& island = *core.AddPredictor();
    island.SetMeasurementLevel(global_800::Nominal);
    island.SetNumValues(3);
    while (core.GetNumPredictors() < numPredictors) {
        core.AddPredictor();  // continuous
    }
    return Imp(core);
}

/// Away from the defaults, as far as the kind has the values.
void Configure(AlgSettings& settings) {
    settings.GetValidationSpec()->Set(CrossValidation);
    settings.GetStopRule()->SetMinNodeSize(20);
    if (auto* const cart = dynamic_cast<CartSettings*>(&settings)) {
        cart->GetPruningSpec()->SetSERuleFactor(0.5);
    }
    if (auto* const cart = dynamic_cast<CCartSettings*>(&settings)) {
        cart->GetCost()->Set(0, 1, 3.0);
    }
    if (auto* const chaid = dynamic_cast<ChaidSettings*>(&settings)) {
        chaid->SetAlphaOfMerge(0.1);
    }
    if (auto* const quest = dynamic_cast<QuestSettings*>(&settings)) {
        quest->SetAlphaOfVariableSelection(0.01);
    }
}

using Value = std::optional<double>;  // none where the kind of settings has no such value

template <typename Kind, typename Getter>
Value Read(AlgSettings const& settings, Getter get) {
    auto const* const kind = dynamic_cast<Kind const*>(&settings);
    return kind != nullptr ? Value(get(*kind)) : std::nullopt;
}

struct Column {
    char const* title;
    Value (*read)(AlgSettings const& settings);
};

Column const Columns[] = {
    {"target",
     [](auto const& s) -> Value {
         return s.GetCoreSettings()->GetTarget()->GetMeasurementLevel();
     }},
    {"predictors", [](auto const& s) -> Value { return s.GetCoreSettings()->GetNumPredictors(); }},
    {"validation", [](auto const& s) -> Value { return s.GetValidationSpec()->GetType(); }},
    {"stop rule", [](auto const& s) -> Value { return s.GetStopRule()->GetMinNodeSize(); }},
    {"pruning",
     [](auto const& s) {
         return Read<CartSettings>(s,
                                   [](auto& c) { return c.GetPruningSpec()->GetSERuleFactor(); });
     }},
    {"costs",
     [](auto const& s) {
         return Read<CCartSettings>(s, [](auto& c) { return c.GetCost()->GetType(); });
     }},
    {"merging",
     [](auto const& s) {
         return Read<ChaidSettings>(s, [](auto& c) { return c.GetAlphaOfMerge(); });
     }},
    {"selection",
     [](auto const& s) {
         return Read<QuestSettings>(s, [](auto& c) { return c.GetAlphaOfVariableSelection(); });
     }},
};

template <typename From, typename To>
void PrintCopy() {
    auto source = Make<From>(6);
    Configure(source);
    auto copy = Make<To>(4);
    copy.CopyFrom(source);
    auto const fresh = Make<To>(4);
    std::cout << "  " << std::setw(22) << NameOf(source) << std::setw(22) << NameOf(copy);
    for (Column const& column : Columns) {
        Value const after = column.read(copy);
        bool const isCarried = after == column.read(source);
        bool const isKept = after == column.read(fresh);
        std::cout << std::setw(11)
                  << (!after      ? ""
                      : isCarried ? "carried"
                      : isKept    ? "kept"
                                  : "changed");
    }
    std::cout << '\n';
}

template <typename Imp>
void PrintAccepted() {
    auto settings = Make<Imp>(4);
    std::cout << "  " << std::setw(22) << NameOf(settings) << std::setw(5)
              << settings.GetMaxNumCompetitors();
    for (int const asked : {2, 99, 0}) {
        settings.SetMaxNumCompetitors(asked);
        std::cout << std::setw(5) << settings.GetMaxNumCompetitors();
    }
    std::cout << std::setw(4) << "" << std::setw(5) << settings.GetMaxNumSurrogates();
    for (int const asked : {2, 99, 0}) {
        settings.SetMaxNumSurrogates(asked);
        std::cout << std::setw(5) << settings.GetMaxNumSurrogates();
    }
    std::cout << '\n';
}

}  // namespace

int main() try {
    std::cout
        << std::left
        << "Settings for 4 predictors, when new and then asked to allow 2, 99 and 0. A number of\n"
           "competitors is cut to the predictors, and 0 is ignored. A number of surrogates is\n"
           "cut by CART to one less, and above two less ignored by QUEST.\n\n"
           "                          competitors             surrogates\n"
           "                        new  2    99   0        new  2    99   0\n";
    PrintAccepted<CCartSettingsImp>();
    PrintAccepted<QuestSettingsImp>();

    std::cout
        << "\nCopyFrom new settings for 4 predictors, where the other settings are for 6 and "
           "differ\n"
           "in every column. What all kinds have is carried over, but a target stays continuous\n"
           "or not, as it was made; what a family has is carried over within it, and otherwise\n"
           "kept. Blank: the kind of settings copied to has no such value.\n\n  "
        << std::setw(22) << "from" << std::setw(22) << "to";
    for (Column const& column : Columns) {
        std::cout << std::setw(11) << column.title;
    }
    std::cout << '\n';
    PrintCopy<CCartSettingsImp, CCartSettingsImp>();
    PrintCopy<CCartSettingsImp, RCartSettingsImp>();
    PrintCopy<RCartSettingsImp, CCartSettingsImp>();
    PrintCopy<RCartSettingsImp, RChaidSettingsImp>();
    PrintCopy<RChaidSettingsImp, CChaidSettingsImp>();
    PrintCopy<CChaidSettingsImp, QuestSettingsImp>();
    PrintCopy<QuestSettingsImp, CCartSettingsImp>();
    return 0;
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
