// What plugin_needing.dll needs.

extern "C" __declspec(dllexport) int answerOfNeeded() { return 42; }
