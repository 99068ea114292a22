// Stamped lines, each handed to the system at once, beside a daily logger that does the same in the same folder.

#include "alog.hpp"
#include "support/ratio.hpp"

#include <spdlog/sinks/daily_file_sink.h>
#include <spdlog/spdlog.h>

#include <cstdio>
#include <memory>

namespace {

void ours(benchmark::State & state) {
  KivBasicFileLogger log(true, true, 30);
  log.open("ours.log", false);
  int line = 0;
  for (auto _ : state)
    log.addText("order %d of %s was written", ++line, "the customer");
  log.deleteFromDisc();
}

void daily(benchmark::State & state) {
  auto const sink = std::make_shared<spdlog::sinks::daily_file_sink_st>("peer.log", 23, 59, true, std::uint16_t{30});
  {
    spdlog::logger log("peer", sink);
    log.set_pattern("%Y.%m.%d, %H:%M:%S: %v");
    log.flush_on(spdlog::level::info);
    int line = 0;
    for (auto _ : state)
      log.info("order {} of {} was written", ++line, "the customer");
  }
}

bench::Pair const flushed{"KivBasicFileLogger: a stamped line, flushed", bench::atMost(1), ours,
                          "spdlog's daily logger, flushing each line", daily};

} // namespace
