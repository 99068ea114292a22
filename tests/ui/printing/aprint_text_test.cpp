// Lines of text on paper.

#include "printtest.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <memory>

using kivtest::choosePrinter;
using kivtest::printLines;
using Lines = std::vector<std::string>;

namespace {

/// A queue that is the printer of the process.
class Text : public support::PrintTest {
protected:
  void SetUp() override {
    PrintTest::SetUp();
    if (IsSkipped())
      return;
    queue_ = std::make_unique<support::PrintQueue>();
    choosePrinter(queue_->name());
  }
  support::PrintQueue & queue() { return *queue_; }

  /// How many lines a page has room for, and how many are printed on it.
  static int room() {
    KivPrinter & printer = *Kiv_GetPrinter(true);
    long const line = printer.LogicToPixel(SV::Size{0, 40}, SV::MAP_10TH_MM).height;
    return static_cast<int>(printer.GetOutputSizePixel().height / line);
  }
  static int linesOfPage() { return room() - 2; }

  /// How many characters of a line lie within the page, with the four spaces.
  static int charactersOfLine() {
    KivPrinter & printer = *Kiv_GetPrinter(true);
    printer.Push();
    SV::Font font("Courier New", {0, printer.LogicToPixel(SV::Size{0, 40}, SV::MAP_10TH_MM).height});
    font.ChangePitch(SV::PITCH_FIXED);
    printer.ChangeFont(font);
    int count = 0;
    for (SV::String line("x"); printer.GetTextSize(line).width < printer.GetOutputSizePixel().width; line += 'x')
      ++count;
    printer.Pop();
    return count;
  }

private:
  std::unique_ptr<support::PrintQueue> queue_;
};

/// Words of different letters, so that each line is another one.
std::string words(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += (i > 0 ? " " : "") + std::string("word") + std::to_string(i);
  return text;
}

std::string joined(Lines const & lines) {
  std::string text;
  for (std::string const & line : lines)
    text += (text.empty() ? "" : " ") + line;
  return text;
}

TEST_F(Text, OfOneLineStandsOnTheFirstLineAfterFourSpaces) {
  ASSERT_TRUE(printLines({"Hello"}));
  support::PrintedJob const job = queue().job();
  ASSERT_EQ(job.papers.size(), 1u);
  EXPECT_EQ(job.lines(), Lines{"Hello"});
  KivPrinter & printer = *Kiv_GetPrinter(true);
  double const point = 72.0 / GetDeviceCaps(printer.GethDC(), LOGPIXELSX);
  double const margin = GetDeviceCaps(printer.GethDC(), PHYSICALOFFSETX) * point;
  double const space = (job.papers[0].width - 2 * margin) / charactersOfLine();
  EXPECT_NEAR(job.papers[0].words[0].x, margin + 4 * space, space / 2);
  double const line = 4 / 25.4 * 72; // 4 mm
  EXPECT_NEAR(job.papers[0].words[0].y, GetDeviceCaps(printer.GethDC(), PHYSICALOFFSETY) * point + line, line / 2);
}

TEST_F(Text, LinesAreFourMillimetresApart) {
  ASSERT_TRUE(printLines({"one", "two", "three"}));
  support::PrintedPaper const paper = queue().job().papers.at(0);
  EXPECT_NEAR(paper.words.at(1).y - paper.words.at(0).y, 4 / 25.4 * 72, 0.2);
  EXPECT_NEAR(paper.words.at(2).y - paper.words.at(1).y, 4 / 25.4 * 72, 0.2);
}

TEST_F(Text, HasCharactersOfOneWidth) {
  ASSERT_TRUE(printLines({"iiiiiiiiii x", "WWWWWWWWWW x"}));
  support::PrintedPaper const paper = queue().job().papers.at(0);
  EXPECT_NEAR(paper.words.at(1).x, paper.words.at(3).x, 0.1);
}

TEST_F(Text, HasUmlauts) {
  ASSERT_TRUE(printLines({"\xC4\xD6\xDC \xE4\xF6\xFC\xDF \x80"}));
  EXPECT_EQ(queue().job().lines(), Lines{"\xC3\x84\xC3\x96\xC3\x9C \xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F \xE2\x82\xAC"});
}

TEST_F(Text, IsBlack) {
  ASSERT_TRUE(printLines({"ggggggggggpppppppppp"}));
  support::PrintedJob const job = queue().job();
  int darkest = 255;
  for (int y = 0; y < 100; ++y)
    for (int x = 0; x < 300; ++x)
      darkest = std::min(darkest, job.grayAt(x, y));
  EXPECT_LT(darkest, 100);
}

// By the properties of the font, since not every system has that face, and not every driver fills what lies below the letters.
TEST_F(Text, IsInCourierNewOfFourMillimetresAndCoversNothing) {
  TextPrinter text("font");
  ASSERT_TRUE(text.Start());
  KivPrinter & printer = *Kiv_GetPrinter(false);
  EXPECT_EQ(printer.GetMapMode().GetMapUnit(), SV::MAP_PIXEL);
  SV::Font const font = printer.ChangeFont(SV::Font());
  EXPECT_EQ(font.GetName(), "Courier New");
  EXPECT_EQ(font.GetSize(), (SV::Size{0, printer.LogicToPixel(SV::Size{0, 40}, SV::MAP_10TH_MM).height}));
  EXPECT_EQ(font.GetPitch(), SV::PITCH_FIXED);
  EXPECT_EQ(font.GetColor().GetRGB(), 0u);
  EXPECT_TRUE(font.IsTransparent());
}

TEST_F(Text, LongerThanALineIsWrappedAtSpacesAndNothingIsLost) {
  std::string const text = words(60);
  ASSERT_TRUE(printLines({text}));
  Lines const lines = queue().job().lines();
  EXPECT_GT(lines.size(), 4u);
  EXPECT_EQ(joined(lines), text);
  auto const width = static_cast<std::size_t>(charactersOfLine());
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    EXPECT_LE(lines[i].size() + 4, width);
    std::string const next = lines[i + 1].substr(0, lines[i + 1].find(' '));
    EXPECT_GT(lines[i].size() + 4 + 1 + next.size(), width) << "the next word would have found room";
  }
}

TEST_F(Text, EveryLineOfAWrappedTextHasTheIndent) {
  ASSERT_TRUE(printLines({words(60)}));
  support::PrintedPaper const paper = queue().job().papers.at(0);
  double const left = paper.words.at(0).x;
  std::vector<double> beginnings;
  for (support::PrintedWord const & word : paper.words)
    if (beginnings.empty() || word.y > paper.words.at(0).y + 5)
      beginnings.push_back(word.x);
  EXPECT_NEAR(*std::min_element(beginnings.begin(), beginnings.end()), left, 0.1);
}

TEST_F(Text, AWordThatIsTooLongIsCutAtTheWidth) {
  auto const perLine = static_cast<std::size_t>(charactersOfLine()) - 4;
  std::string word;
  for (std::size_t i = 0; i < 2 * perLine + 5; ++i)
    word += static_cast<char>('a' + i % 26);
  ASSERT_TRUE(printLines({word}));
  EXPECT_EQ(queue().job().lines(),
            (Lines{word.substr(0, perLine), word.substr(perLine, perLine), word.substr(2 * perLine)}));
}

TEST_F(Text, ASpaceThatWouldBeginALineIsLeftOut) {
  auto const perLine = static_cast<std::size_t>(charactersOfLine()) - 4;
  ASSERT_TRUE(printLines({std::string(perLine, 'a') + " b"}));
  support::PrintedPaper const paper = queue().job().papers.at(0);
  ASSERT_EQ(paper.words.size(), 2u);
  EXPECT_NEAR(paper.words[1].x, paper.words[0].x, 0.1);
}

/// Whether the first line ends at its only space, where \p before characters stand before it.
bool endsAtSpace(support::PrintQueue const & queue, int before, int perLine) {
  std::string const first(static_cast<std::size_t>(before), 'a');
  std::size_t const former = queue.jobCount();
  EXPECT_TRUE(printLines({first + ' ' + std::string(static_cast<std::size_t>(perLine), 'b')}));
  return queue.job(former + 1).lines().at(0) == first;
}

TEST_F(Text, ASpaceWithinTheFirstTenCharactersDoesNotEndALine) {
  int const perLine = charactersOfLine() - 4;
  EXPECT_FALSE(endsAtSpace(queue(), 5, perLine)); // the tenth character
}

TEST_F(Text, ASpaceAfterTheTenthCharacterEndsALine) {
  int const perLine = charactersOfLine() - 4;
  EXPECT_TRUE(endsAtSpace(queue(), 6, perLine));
}

TEST_F(Text, AWordThatEndsALineBeginsTheNextOneWithoutADoubledLetter) {
  auto const perLine = static_cast<std::size_t>(charactersOfLine()) - 4;
  std::string const first(perLine - 3, 'a');
  ASSERT_TRUE(printLines({first + " xyzuvw end"}));
  support::PrintedJob const job = queue().job();
  EXPECT_EQ(job.lines(), (Lines{first, "xyzuvw end"}));
  EXPECT_NEAR(job.papers.at(0).words.at(1).x, job.papers.at(0).words.at(0).x, 0.1) << "the space stays behind";
}

TEST_F(Text, AWordThatFillsItsLineStaysThereWhenASpaceFollows) {
  auto const perLine = static_cast<std::size_t>(charactersOfLine()) - 4;
  std::string const full = std::string(20, 'a') + ' ' + std::string(perLine - 21, 'b');
  ASSERT_TRUE(printLines({full + " end"}));
  EXPECT_EQ(queue().job().lines(), (Lines{full, "end"}));
}

TEST_F(Text, IsCutAtItsLineFeeds) {
  ASSERT_TRUE(printLines({"one\ntwo\n\nthree"}));
  support::PrintedJob const job = queue().job();
  EXPECT_EQ(job.lines(), (Lines{"one", "two", "three"}));
  support::PrintedPaper const & paper = job.papers.at(0);
  EXPECT_NEAR(paper.words.at(2).y - paper.words.at(1).y, 2 * (paper.words.at(1).y - paper.words.at(0).y), 0.3);
}

TEST_F(Text, LosesItsCarriageReturns) {
  ASSERT_TRUE(printLines({"o\rne\r\ntwo\r"}));
  EXPECT_EQ(queue().job().lines(), (Lines{"one", "two"}));
}

TEST_F(Text, IsCollectedUntilTheLineEnds) {
  TextPrinter printer("collected");
  ASSERT_TRUE(printer.Start());
  printer.Print("one ");
  printer.Print("and ");
  printer.PrintLine("two");
  printer.Print("rest");
  printer.End();
  EXPECT_EQ(queue().job().lines(), (Lines{"one and two", "rest"}));
}

TEST_F(Text, AnEmptyLineAdvancesByOne) {
  TextPrinter printer("empty lines");
  ASSERT_TRUE(printer.Start());
  printer.PrintLine("one");
  printer.NewLine();
  printer.PrintLine("");
  printer.PrintLine("two");
  printer.PrintLine("three");
  printer.End();
  support::PrintedPaper const paper = queue().job().papers.at(0);
  EXPECT_NEAR(paper.words.at(1).y - paper.words.at(0).y, 3 * (paper.words.at(2).y - paper.words.at(1).y), 0.3);
}

/// So many numbered lines as one job, and which line each page begins with.
Lines beginningsOfPages(support::PrintQueue const & queue, int count) {
  Lines lines;
  for (int i = 1; i <= count; ++i)
    lines.push_back(std::to_string(i));
  std::size_t const former = queue.jobCount();
  EXPECT_TRUE(printLines(lines));
  support::PrintedJob const job = queue.job(former + 1);
  Lines beginnings;
  for (std::size_t page = 0; page < job.papers.size(); ++page) {
    Lines const ofPage = page < job.pages.size() ? job.lines(page) : Lines();
    beginnings.push_back(ofPage.empty() ? "nothing" : ofPage.front());
  }
  return beginnings;
}

TEST_F(Text, BreaksThePageTwoLinesBeforeItIsFull) {
  int const page = linesOfPage();
  EXPECT_EQ(beginningsOfPages(queue(), page + 1), (Lines{"1", std::to_string(page + 1)}));
}

TEST_F(Text, OfTwoLinesLessThanAPageHasOnePage) {
  EXPECT_EQ(beginningsOfPages(queue(), linesOfPage() - 2), Lines{"1"});
}

TEST_F(Text, ThatFillsAPageIsFollowedByAnEmptyOne) {
  EXPECT_EQ(beginningsOfPages(queue(), linesOfPage()), (Lines{"1", "nothing"}));
  EXPECT_EQ(beginningsOfPages(queue(), linesOfPage() - 1), (Lines{"1", "nothing"})) << "the end is a line too";
}

TEST_F(Text, OfAThousandLinesGoesOverPages) {
  int const page = linesOfPage();
  Lines expected;
  for (int line = 1; line <= 1000; line += page)
    expected.push_back(std::to_string(line));
  EXPECT_EQ(beginningsOfPages(queue(), 1000), expected);
}

TEST_F(Text, TheLastLineOfAPageLiesOnThePaper) {
  ASSERT_GT(linesOfPage(), 10);
  Lines lines(static_cast<std::size_t>(linesOfPage()), "line");
  ASSERT_TRUE(printLines(lines));
  support::PrintedPaper const paper = queue().job().papers.at(0);
  ASSERT_EQ(paper.words.size(), lines.size());
  EXPECT_LT(paper.words.back().y + 3 * 4 / 25.4 * 72, paper.height);
}

TEST_F(Text, AnEmptyLineBreaksThePageToo) {
  TextPrinter printer("empty lines");
  ASSERT_TRUE(printer.Start());
  for (int i = 0; i < linesOfPage(); ++i)
    printer.NewLine();
  printer.PrintLine("next page");
  printer.End();
  support::PrintedJob const job = queue().job();
  ASSERT_EQ(job.papers.size(), 2u);
  EXPECT_EQ(job.lines(1), Lines{"next page"});
}

TEST_F(Text, AWrappedLineBreaksThePageInItsMiddle) {
  int const page = linesOfPage();
  Lines lines(static_cast<std::size_t>(page - 1), "line");
  lines.push_back(words(40));
  ASSERT_TRUE(printLines(lines));
  support::PrintedJob const job = queue().job();
  ASSERT_EQ(job.papers.size(), 2u);
  EXPECT_EQ(job.lines(0).back().substr(0, 11), "word0 word1");
  EXPECT_EQ(job.lines(1).back().substr(job.lines(1).back().size() - 6), "word39");
}

} // namespace
