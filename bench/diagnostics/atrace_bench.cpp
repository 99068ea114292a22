// Diagnostics that nobody listens to, beside an empty function of a DLL: they stand in loops of products.

#include "atrace.hpp"
#include "diagnostics/empty_call.hpp"
#include "support/ratio.hpp"

namespace {

void empty(benchmark::State & state) {
  for (auto _ : state)
    emptyCall();
}

bench::Pair const trace{"Kiv_Trace, switched off", bench::atMost(5),
                        [](benchmark::State & state) {
                          for (auto _ : state)
                            Kiv_Trace("%s has %d lines", "report.txt", 7);
                        },
                        "an empty exported call", empty};

bench::Pair const debugLine{"KivDebugOut, nobody listening", bench::atMost(5),
                            [](benchmark::State & state) {
                              for (auto _ : state)
                                KivDebugOut("[kiv] a line of the debug output\n");
                            },
                            "an empty exported call", empty};

} // namespace
