/// Tells LeakSanitizer of the one deliberate leak: what an assignment to CoreSettingsImp replaces.
extern "C" char const* __lsan_default_suppressions();  // NOLINT(*-identifier-naming, bugprone-*)

extern "C" char const* __lsan_default_suppressions() {  // NOLINT(*-identifier-naming, bugprone-*)
    return "leak:MakeCoreToBeReplaced\n";
}
