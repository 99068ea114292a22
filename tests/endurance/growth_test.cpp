// Whether figures have grown: rules that need no run.

#include "growth.hpp"

#include "options.hpp"
#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using endurance::Figures;
using endurance::Growth;
using endurance::Kind;
using endurance::Sample;

/// So many samples, a second apart, of one figure that is a function of the sample's number.
template <class Value> std::vector<Sample> samplesOf(int count, Kind kind, Value const & value) {
  std::vector<Sample> samples;
  for (int i = 0; i < count; ++i) {
    samples.push_back({i * 1.0, {}});
    samples.back().figures[kind] = value(i);
  }
  return samples;
}

Growth rowOf(std::vector<Sample> const & samples, Kind kind) {
  return endurance::growthIn(samples).at(static_cast<std::size_t>(kind));
}

endurance::Options optionsOf(std::vector<std::string> words) {
  std::vector<char *> pointers{nullptr};
  for (std::string & word : words)
    pointers.push_back(word.data());
  return endurance::readOptions(static_cast<int>(pointers.size()), pointers.data());
}

TEST(Growth, IsThatOfTheLastTenthOverTheSecond) {
  Growth const row = rowOf(samplesOf(60, endurance::kHandles, [](int i) { return i; }), endurance::kHandles);
  EXPECT_EQ(row.before, 9); // the middle of 6 to 11
  EXPECT_EQ(row.after, 57); // of 54 to 59
  EXPECT_TRUE(row.isTooMuch());
}

TEST(Growth, LeavesOutTheFirstTenth) {
  auto const atFirst = [](int i) { return i < 6 ? 0 : 100; };
  EXPECT_FALSE(rowOf(samplesOf(60, endurance::kHandles, atFirst), endurance::kHandles).isTooMuch());
}

TEST(Growth, OfOneSampleAloneDoesNotCount) {
  auto const once = [](int i) { return i == 57 ? 1000 : 5; };
  EXPECT_FALSE(rowOf(samplesOf(60, endurance::kHandles, once), endurance::kHandles).isTooMuch());
}

TEST(Growth, MayBeAsMuchAsIsAllowed) {
  for (int kind = 0; kind < endurance::kKinds; ++kind) {
    auto const each = static_cast<Kind>(kind);
    double const allowed = endurance::allowedGrowth(each);
    auto const as = [&](double more) { return [more](int i) { return i < 30 ? 10 : 10 + more; }; };
    EXPECT_FALSE(rowOf(samplesOf(20, each, as(0)), each).isTooMuch()) << endurance::nameOf(each);
    EXPECT_FALSE(rowOf(samplesOf(60, each, as(allowed)), each).isTooMuch()) << endurance::nameOf(each);
    EXPECT_TRUE(rowOf(samplesOf(60, each, as(allowed + 1)), each).isTooMuch()) << endurance::nameOf(each);
  }
}

TEST(Growth, ThatIsNegativeIsNone) {
  auto const less = [](int i) { return 1000 - i; };
  EXPECT_FALSE(rowOf(samplesOf(60, endurance::kFiles, less), endurance::kFiles).isTooMuch());
}

TEST(Growth, NeedsTenSamples) {
  auto const none = [](int) { return 0; };
  EXPECT_THROW(endurance::growthIn(samplesOf(9, endurance::kFiles, none)), std::runtime_error);
  EXPECT_EQ(endurance::growthIn(samplesOf(10, endurance::kFiles, none)).size(), std::size_t{endurance::kKinds});
}

TEST(Growth, IsMarkedInTheTable) {
  auto const more = [](int i) { return i < 30 ? 1 : 2; };
  std::string const table = tableOf(endurance::growthIn(samplesOf(60, endurance::kFiles, more)));
  EXPECT_NE(table.find("files                     1             2        1         0   GREW\n"), std::string::npos)
      << table;
  EXPECT_EQ(table.find("GREW"), table.rfind("GREW"));
}

/// What is counted more after something was made, and no more once it is gone.
template <class Make, class Drop> void expectCounted(Kind kind, Make const & make, Drop const & drop) {
  support::TempFolder const folder;
  auto const figure = [&] { return endurance::measure({folder.path()})[kind]; };
  figure(); // what counting itself keeps
  double const before = figure();
  auto const made = make(folder);
  EXPECT_EQ(figure(), before + 1) << endurance::nameOf(kind);
  drop(made);
  EXPECT_EQ(figure(), before) << endurance::nameOf(kind);
}

TEST(Figures, CountHandles) {
  expectCounted(
      endurance::kHandles, [](auto &) { return CreateEventA(nullptr, TRUE, FALSE, nullptr); },
      [](HANDLE event) { CloseHandle(event); });
}

TEST(Figures, CountDrawingObjects) {
  ReleaseDC(nullptr, GetDC(nullptr)); // loads what draws
  expectCounted(
      endurance::kDrawingObjects, [](auto &) { return CreatePen(PS_SOLID, 3, 0x123456); },
      [](HPEN pen) { DeleteObject(pen); });
}

TEST(Figures, CountMenus) {
  expectCounted(
      endurance::kWindowObjects, [](auto &) { return CreatePopupMenu(); }, [](HMENU menu) { DestroyMenu(menu); });
}

TEST(Figures, CountWindowsOfMessagesAlone) {
  auto const make = [](auto &) {
    return CreateWindowA("STATIC", "", 0, 0, 0, 9, 9, HWND_MESSAGE, nullptr, nullptr, nullptr);
  };
  DestroyWindow(make(*this)); // the system's own windows come with the first
  expectCounted(endurance::kWindowObjects, make, [](HWND window) { DestroyWindow(window); });
}

TEST(Figures, CountKeyTables) {
  ACCEL key = {FVIRTKEY, 'A', 1};
  expectCounted(
      endurance::kWindowObjects, [&](auto &) { return CreateAcceleratorTableA(&key, 1); },
      [](HACCEL table) { DestroyAcceleratorTable(table); });
}

// Counting itself allocates a little.
TEST(Figures, CountBlocksAndBytesOfTheHeap) {
  constexpr double kBlocks = 400;
  constexpr double kSize = 1000;
  endurance::measure({});
  Figures const before = endurance::measure({});
  std::vector<std::string> blocks(static_cast<std::size_t>(kBlocks));
  for (std::string & block : blocks)
    block.assign(static_cast<std::size_t>(kSize), 'a');
  Figures const with = endurance::measure({});
  blocks.clear();
  blocks.shrink_to_fit();
  Figures const after = endurance::measure({});
  EXPECT_NEAR(with[endurance::kHeapBlocks] - before[endurance::kHeapBlocks], kBlocks, kBlocks / 4);
  EXPECT_NEAR(with[endurance::kHeapBytes] - before[endurance::kHeapBytes], kBlocks * kSize, kBlocks * kSize / 4);
  EXPECT_NEAR(after[endurance::kHeapBlocks] - before[endurance::kHeapBlocks], 0, kBlocks / 4);
}

TEST(Figures, CountFiles) {
  expectCounted(
      endurance::kFiles,
      [](auto & folder) {
        support::writeFile(folder / "one.txt", "one");
        return folder / "one.txt";
      },
      [](std::string const & file) { DeleteFileA(file.c_str()); });
}

TEST(EnduranceOptions, AreReadFromTheWords) {
  endurance::Options const options =
      optionsOf({"--seconds", "2.5", "--only", "texts,far calls", "--without", "boxes", "--leak", "file"});
  EXPECT_EQ(options.seconds, 2.5);
  EXPECT_TRUE(options.wants("texts") && options.wants("far calls"));
  EXPECT_FALSE(options.wants("boxes") || options.wants("events"));
  EXPECT_EQ(options.leak, "file");
}

TEST(EnduranceOptions, WantEverythingForTenMinutesWithoutWords) {
  endurance::Options const options = optionsOf({});
  EXPECT_EQ(options.seconds, 600);
  EXPECT_TRUE(options.wants("events"));
}

TEST(EnduranceOptions, AreRefusedWhereTheyMeanNothing) {
  EXPECT_THROW(optionsOf({"--seconds", "many"}), std::runtime_error);
  EXPECT_THROW(optionsOf({"--seconds", "0"}), std::runtime_error);
  EXPECT_THROW(optionsOf({"--seconds"}), std::runtime_error);
  EXPECT_THROW(optionsOf({"--times", "3"}), std::runtime_error);
}

} // namespace
