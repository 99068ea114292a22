// The benchmark program: runs all pairs, then prints a table of ratios, and writes it as JSON where --json=FILE asks for it.

#include "support/ratio.hpp"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

std::string goalText(bench::Row const & row) {
  if (!row.goal.most)
    return "-";
  char text[32];
  std::snprintf(text, sizeof text, "%.2f %s", *row.goal.most, row.met() ? "met" : "MISSED");
  return text;
}

void printTable(std::vector<bench::Row> const & rows) {
  std::printf("\n%-60s %14s %14s %8s  %-12s %s\n", "operation", "ours ns", "peer ns", "ratio", "goal", "peer");
  for (auto const & row : rows)
    std::printf("%-60s %14.1f %14.1f %8.3f  %-12s %s\n", row.name.c_str(), row.ours, row.peer, row.ratio(),
                goalText(row).c_str(), row.peerName.c_str());
}

void writeJson(char const * file, std::vector<bench::Row> const & rows) {
  std::ofstream out(file);
  char const * separator = "[\n";
  for (auto const & row : rows) {
    out << separator << "  {\"operation\": \"" << row.name << "\", \"peer\": \"" << row.peerName
        << "\", \"ours_ns\": " << row.ours << ", \"peer_ns\": " << row.peer << ", \"ratio\": " << row.ratio()
        << ", \"goal\": ";
    if (row.goal.most)
      out << *row.goal.most;
    else
      out << "null";
    out << "}";
    separator = ",\n";
  }
  out << (rows.empty() ? "[]\n" : "\n]\n");
  if (!out)
    std::fprintf(stderr, "%s could not be written\n", file);
}

} // namespace

int main(int argc, char ** argv) {
  std::vector<char *> arguments{argv[0]};
  char const * json = nullptr;
  // Alternating repetitions, so that a busy moment of the machine hits both sides.
  char interleave[] = "--benchmark_enable_random_interleaving=true";
  char repeat[] = "--benchmark_repetitions=7";
  char minimum[] = "--benchmark_min_time=0.05";
  arguments.insert(arguments.end(), {interleave, repeat, minimum});
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--json=", 7) == 0)
      json = argv[i] + 7;
    else
      arguments.push_back(argv[i]);
  }
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  auto const rows = bench::runPairs();
  printTable(rows);
  if (json != nullptr)
    writeJson(json, rows);
  return rows.empty() ? 1 : 0;
}
