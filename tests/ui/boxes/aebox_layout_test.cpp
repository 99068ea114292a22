// Where everything is in an error box, looked at from outside.
#include "aevents.hpp"
#include "ui/boxes/boxtest.hpp"

#include <algorithm>

namespace {

using boxtest::Box;
using boxtest::Parts;

struct Rect {
  long x, y, width, height;
};

bool operator==(Rect const & a, Rect const & b) {
  return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

std::ostream & operator<<(std::ostream & out, Rect const & rect) {
  return out << rect.x << ", " << rect.y << ": " << rect.width << " by " << rect.height;
}

Rect placeOf(HWND child) {
  RECT rect = {};
  GetWindowRect(child, &rect);
  MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT *>(&rect), 2);
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

/// A device with the font of a window.
class FontOf {
public:
  explicit FontOf(SV::Window const & window)
      : device_(GetDC(nullptr)),
        former_(SelectObject(device_, reinterpret_cast<HFONT>(SendMessageA(window.GethWnd(), WM_GETFONT, 0, 0)))) {}
  FontOf(FontOf const &) = delete;
  FontOf & operator=(FontOf const &) = delete;
  ~FontOf() {
    SelectObject(device_, former_);
    ReleaseDC(nullptr, device_);
  }

  SIZE sizeOf(std::string const & text) const {
    SIZE size = {};
    GetTextExtentPoint32A(device_, text.c_str(), static_cast<int>(text.size()), &size);
    return size;
  }
  long across(long units) const {
    long const letters = sizeOf("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz").cx;
    return MulDiv(units, (letters / 26 + 1) / 2, 4);
  }
  long down(long units) const { return MulDiv(units, sizeOf("A").cy, 8); }

private:
  HDC device_;
  HGDIOBJ former_;
};

/// Left edges and widths of the buttons by the table of styles.
std::vector<Rect> expectedButtons(unsigned long style, long W, FontOf const & font, long y) {
  long const b = font.across(50);
  long const w = font.across(60);
  long const G = font.across(10);
  long const g = font.across(4);
  long const h = font.down(15);
  auto const row = [&](long left, std::vector<std::pair<long, long>> const & widthsAndGaps) {
    std::vector<Rect> result;
    for (auto const & [width, gap] : widthsAndGaps) {
      result.push_back({left, y, width, h});
      left += width + gap;
    }
    return result;
  };
  switch (style) {
  case KivErrorBox::WB_OK: return row((W - (G + 2 * b)) / 2, {{b, G}, {b, 0}});
  case KivErrorBox::WB_OK_CANCEL:
  case KivErrorBox::WB_YES_NO: return row((W - (G + 3 * b + g)) / 2, {{b, g}, {b, G}, {b, 0}});
  case KivErrorBox::WB_YES_NO_CANCEL: return row((W - (2 * G + 4 * b + g)) / 2, {{b, g}, {b, G}, {b, G}, {b, 0}});
  case KivErrorBox::WB_RETRY_CANCEL: return row((W - (w + 2 * b + G + g)) / 2, {{w, g}, {b, G}, {b, 0}});
  default: return {};
  }
}

/// Icon, text, buttons and the box itself, for a text area of that size.
void expectLayout(Box const & box, unsigned long style, SIZE const & textArea) {
  FontOf const font(box);
  Parts const parts(box);
  long const marginX = font.across(8);
  long const marginY = font.down(6);
  EXPECT_EQ(placeOf(parts.icon), (Rect{marginX, marginY, 32, 32}));
  EXPECT_EQ(placeOf(parts.text), (Rect{32 + marginX + font.across(10), marginY, textArea.cx, textArea.cy}));
  long const W = 32 + 2 * marginX + textArea.cx + font.across(10);
  long const buttonY = textArea.cy + marginY + font.down(10);
  std::vector<Rect> places;
  for (HWND const button : parts.buttons)
    places.push_back(placeOf(button));
  EXPECT_EQ(places, expectedButtons(style, W, font, buttonY));
  EXPECT_EQ(box.GetOutputSizePixel(), (SV::Size{W, font.down(15) + marginY + buttonY}));
}

std::vector<std::string> linesOf(std::string const & text) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start <= text.size();) {
    std::size_t const end = std::min(text.find('\n', start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

long maxTextWidth() { return GetSystemMetrics(SM_CXSCREEN) * 3 / 4; }

/// The area for what is shown, one line of the text a line of the box.
SIZE areaFor(Box const & box, std::vector<std::string> const & lines) {
  FontOf const font(box);
  long width = 300;
  for (std::string const & line : lines)
    width = std::max(width, static_cast<long>(font.sizeOf(line).cx));
  return {width, std::max(static_cast<long>(lines.size()) * font.sizeOf("A").cy, 32L)};
}

std::string words(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += "word" + std::to_string(i) + ' ';
  return text;
}

class BoxLayout : public boxtest::BoxTest, public testing::WithParamInterface<unsigned long> {};

TEST_P(BoxLayout, OfAnEmptyTextHasAnAreaOf300By32) {
  Box const box(nullptr, GetParam(), "");
  expectLayout(box, GetParam(), {300, 32});
}

TEST_P(BoxLayout, OfTextsThatFitFollowsTheirLines) {
  for (std::string const text : {"word", "One line of a few words", "Two\nlines", "One\n\nand three more\nlines\n\n\n",
                                 "Umlauts \xC4\xD6\xDC \xE4\xF6\xFC\xDF", "with\ttabs\tin it"}) {
    Box const box(nullptr, GetParam(), text.c_str());
    std::string shown = text;
    std::replace(shown.begin(), shown.end(), '\t', ' ');
    shown.erase(shown.find_last_not_of('\n') + 1);
    EXPECT_EQ(boxtest::systemText(Parts(box).text), shown);
    expectLayout(box, GetParam(), areaFor(box, linesOf(shown)));
  }
}

TEST_P(BoxLayout, OfALongLineIsWrappedAtThreeQuartersOfTheScreen) {
  Box const box(nullptr, GetParam(), words(200).c_str());
  std::vector<std::string> const lines = linesOf(boxtest::systemText(Parts(box).text));
  FontOf const font(box);
  ASSERT_GT(lines.size(), 2u);
  std::vector<std::string> withSpaces;
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    withSpaces.push_back(lines[i] + ' '); // which has become the newline, and counts
    EXPECT_LE(font.sizeOf(withSpaces.back()).cx, maxTextWidth()) << i;
    std::string const nextWord = lines[i + 1].substr(0, lines[i + 1].find(' ') + 1);
    EXPECT_GT(font.sizeOf(withSpaces.back() + nextWord).cx, maxTextWidth()) << i << " could be longer";
  }
  withSpaces.push_back(lines.back());
  expectLayout(box, GetParam(), areaFor(box, withSpaces));
}

TEST_P(BoxLayout, OfALongLineThatIsThereTwiceHasRoomForItTwiceBroken) {
  std::string line = words(1);
  FontOf const font(Box(nullptr, 0, ""));
  for (int i = 2; font.sizeOf(line).cx <= maxTextWidth(); ++i)
    line = words(i);
  line.pop_back();
  Box const box(nullptr, GetParam(), (line + "\n" + line).c_str());
  std::vector<std::string> const shown = linesOf(boxtest::systemText(Parts(box).text));
  ASSERT_EQ(shown.size(), 3u) << "only the first one is broken";
  EXPECT_EQ(shown[2], line);
  expectLayout(box, GetParam(), areaFor(box, {shown[0] + ' ', shown[1], shown[0], shown[1]}));
}

TEST_P(BoxLayout, OfOneLongWordIsAsWideAsTheWord) {
  std::string const word(400, 'W');
  Box const box(nullptr, GetParam(), word.c_str());
  EXPECT_GT(FontOf(box).sizeOf(word).cx, maxTextWidth());
  expectLayout(box, GetParam(), areaFor(box, {word}));
}

TEST_P(BoxLayout, OfAThousandLinesIsAsHighAsTheLines) {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += "line\n";
  Box const box(nullptr, GetParam(), text.c_str());
  expectLayout(box, GetParam(), areaFor(box, std::vector<std::string>(1000, "line")));
}

TEST_P(BoxLayout, GrowsWithTheFont) {
  for (long const height : {8L, 13L, 26L, 40L}) {
    SV::Application::ChangeAppFont(SV::Font("Arial", {0, height}));
    Box const box(nullptr, GetParam(), "One line of a few words");
    expectLayout(box, GetParam(), areaFor(box, {"One line of a few words"}));
  }
}

INSTANTIATE_TEST_SUITE_P(Styles, BoxLayout, testing::Values(0x10u, 0x20u, 0x40u, 0x80u, 0x100u, 0u));

class BoxParts : public boxtest::BoxTest {};

TEST_F(BoxParts, ShowsEachTilde) {
  Box const box(nullptr, KivErrorBox::WB_OK, "a~b~~c & d");
  EXPECT_EQ(boxtest::systemText(Parts(box).text), "a~b~~c && d") << "the system shows one for each && ";
  expectLayout(box, KivErrorBox::WB_OK, areaFor(box, {"a~b~~c & d"}));
}

TEST_F(BoxParts, AreTheButtonsOfTheStyleFromLeftToRight) {
  using Labels = std::vector<std::string>;
  auto const labels = [](unsigned long style) { return Parts(Box(nullptr, style, "")).labels(); };
  SV::International international;
  international.ChangeOKButtonText("OK");
  international.ChangeCancelButtonText("Cancel");
  international.ChangeHelpButtonText("Help");
  SV::Application::ChangeAppInternational(international);
  EXPECT_EQ(labels(0x10), (Labels{"OK", "Help"}));
  EXPECT_EQ(labels(0x20), (Labels{"OK", "Cancel", "Help"}));
  EXPECT_EQ(labels(0x40), (Labels{"&Yes", "&No", "Help"}));
  EXPECT_EQ(labels(0x80), (Labels{"&Yes", "&No", "Cancel", "Help"}));
  EXPECT_EQ(labels(0x100), (Labels{"&Retry", "Cancel", "Help"}));
  EXPECT_EQ(labels(0), Labels());
  EXPECT_EQ(labels(0x3F00 & ~0x100u), Labels()) << "default buttons alone are no buttons";
}

TEST_F(BoxParts, AreThoseOfTheFirstButtonBitThatIsSet) {
  auto const count = [](unsigned long style) { return Parts(Box(nullptr, style, "")).buttons.size(); };
  EXPECT_EQ(count(0x10 | 0x20 | 0x40 | 0x80 | 0x100), 2u);
  EXPECT_EQ(count(0x40 | 0x80), 3u);
  EXPECT_EQ(count(0x80 | 0x100), 4u);
}

TEST_F(BoxParts, HaveTheDefaultButtonOfTheBitIfThereIsSuchAButton) {
  struct {
    unsigned long style;
    int place; ///< of the default button; -1 for none
  } const rows[] = {{0x10, -1},         {0x10 | 0x200, 0},  {0x20 | 0x200, 0},  {0x20 | 0x400, 1},  {0x20 | 0x2000, -1},
                    {0x40 | 0x1000, 0}, {0x40 | 0x2000, 1}, {0x40 | 0x200, -1}, {0x80 | 0x1000, 0}, {0x80 | 0x2000, 1},
                    {0x80 | 0x400, 2},  {0x100 | 0x800, 0}, {0x100 | 0x400, 1}};
  for (auto const & row : rows) {
    Box const box(nullptr, row.style, "");
    int place = 0;
    for (HWND const button : Parts(box).buttons) {
      bool const isDefault = (GetWindowLongPtrA(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
      EXPECT_EQ(isDefault, place == row.place) << std::hex << row.style << ", " << place;
      ++place;
    }
  }
}

TEST_F(BoxParts, BeginAGroupWithTheButtonsOfTheSmallestBoxOnly) {
  auto const groups = [](unsigned long style) {
    Box const box(nullptr, style, "");
    std::vector<bool> result;
    for (HWND const button : Parts(box).buttons)
      result.push_back((GetWindowLongPtrA(button, GWL_STYLE) & WS_GROUP) != 0);
    return result;
  };
  EXPECT_EQ(groups(0x10), (std::vector<bool>{true, true}));
  EXPECT_EQ(groups(0x20), (std::vector<bool>{false, false, false}));
}

TEST_F(BoxParts, HaveTheErrorIconUntilAnotherIsSet) {
  Box box(nullptr, KivErrorBox::WB_OK, "");
  SV::Icon const error(SV::ICON_STYLE_ERROR);
  ASSERT_FALSE(error.IsEmpty());
  box.SetPosSizePixel({50, 50}, box.GetSizePixel());
  SetWindowPos(box.GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  std::vector<COLORREF> middle;
  auto const look = [&] {
    box.Show();
    box.Update();
    UpdateWindow(Parts(box).icon);
    HDC const device = GetDC(Parts(box).icon);
    middle.push_back(GetPixel(device, 8, 16));
    EXPECT_EQ(GetPixel(device, 0, 0), GetSysColor(COLOR_3DFACE)) << "the corner is that of the box";
    ReleaseDC(Parts(box).icon, device);
  };
  look();
  box.SetIconStyle(SV::ICON_STYLE_INFO);
  look();
  EXPECT_NE(middle[0], middle[1]);
  EXPECT_GT(GetRValue(middle[0]), GetBValue(middle[0])) << "red for an error";
  EXPECT_GT(GetBValue(middle[1]), GetRValue(middle[1])) << "blue for an information";
}

TEST_F(BoxParts, AreInABoxThatIsAsWideAsItsTextEvenWhereTheButtonsNeedMore) {
  SV::Application::ChangeAppFont(SV::Font("Arial", {0, 40}));
  Box const box(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  EXPECT_LT(placeOf(Parts(box).buttons.front()).x, 0);
  expectLayout(box, KivErrorBox::WB_YES_NO_CANCEL, {300, FontOf(box).sizeOf("A").cy});
}

TEST_F(BoxParts, TakeOtherLabels) {
  Box box(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "");
  box.SetButtonText(2, "~Save");
  box.SetButtonText(3, "~Drop & go");
  box.SetButtonText(0, "Back");
  box.SetButtonText(4, "nowhere");
  box.SetButtonText(5, "nowhere");
  EXPECT_EQ(Parts(box).labels()[0], "&Save");
  EXPECT_EQ(Parts(box).labels()[1], "&Drop && go");
  EXPECT_EQ(Parts(box).labels()[2], "Back");
}

TEST_F(BoxParts, CanBeDisabledOneByOne) {
  for (unsigned long const style : boxtest::kStyles)
    for (unsigned long button = 0; button < 7; ++button) {
      Box box(nullptr, style, "");
      std::vector<HWND> const buttons = Parts(box).buttons;
      auto const disabled = [&] {
        return std::count_if(buttons.begin(), buttons.end(), [](HWND window) { return !IsWindowEnabled(window); });
      };
      ASSERT_EQ(disabled(), 1) << "Help, since there is none";
      box.DisableButton(button);
      bool const has = button == 1 ? style <= 0x20 : button == 0 ? style != 0x10 && style != 0x40 : false;
      bool const hasOwn =
          ((button == 2 || button == 3) && (style == 0x40 || style == 0x80)) || (button == 4 && style == 0x100);
      EXPECT_EQ(disabled(), has || hasOwn ? 2 : 1) << style << ", " << button;
    }
}

TEST_F(BoxParts, DisableHelpUnlessTheApplicationHasOne) {
  EXPECT_FALSE(IsWindowEnabled(Parts(Box(nullptr, KivErrorBox::WB_OK, "")).buttons.back()));
  boxtest::CountingHelp help;
  SV::Application::ChangeHelp(&help);
  Box const box(nullptr, KivErrorBox::WB_OK, "");
  EXPECT_TRUE(IsWindowEnabled(Parts(box).buttons.back()));
}

TEST_F(BoxParts, AreGermanWithTheGermanPack) {
  SV::ResMgr german((support::binFolder() + "language\\1031\\kivara72.dll").c_str());
  SV::Resource::SetResManager(&german);
  EXPECT_EQ(Parts(Box(nullptr, KivErrorBox::WB_YES_NO, "")).labels()[0], "&Ja");
  EXPECT_EQ(Parts(Box(nullptr, KivErrorBox::WB_YES_NO, "")).labels()[1], "&Nein");
  EXPECT_EQ(Parts(Box(nullptr, KivErrorBox::WB_RETRY_CANCEL, "")).labels()[0], "&Wiederholen");
  SV::Resource::SetResManager(&manager);
}

TEST_F(BoxParts, HaveTheTitleOfTheApplicationWindowOrTheParentOrTheirOwn) {
  EXPECT_STREQ(Box(nullptr, KivErrorBox::WB_OK, "").GetText().c_str(), "KIVARA");
  SV::Window parent(nullptr, SV::WB_TITLE);
  parent.SetText("Parent");
  EXPECT_STREQ(Box(&parent, KivErrorBox::WB_OK, "").GetText().c_str(), "Parent");
  SV::Window main(nullptr, SV::WB_TITLE);
  main.SetText("Main");
  SV::Application::SetAppWindow(&main);
  EXPECT_STREQ(Box(&parent, KivErrorBox::WB_OK, "").GetText().c_str(), "Main");
  EXPECT_STREQ(Box(nullptr, KivErrorBox::WB_OK, "").GetText().c_str(), "Main");
}

TEST_F(BoxParts, AskForTheHelpOfTheirKey) {
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "[aebox-01]\ntext").GetHelpId(), 12201u);
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "[aebox-01]\n").GetHelpId(), 12201u) << "of the text as given";
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "text").GetHelpId(), 0u);
}

TEST_F(BoxParts, LieOverTheTopmostDialogWhenTheParentIsTheApplicationWindow) {
  SV::Window main(nullptr, SV::WB_TITLE);
  SV::Application::SetAppWindow(&main);
  EXPECT_EQ(Box(&main, KivErrorBox::WB_OK, "").GetParent(), nullptr) << "nothing is to be seen";
  main.Show();
  EXPECT_EQ(Box(&main, KivErrorBox::WB_OK, "").GetParent(), &main);
  SV::Dialog dialog(&main);
  dialog.Show();
  Kiv_PushParentWindow(&dialog);
  EXPECT_EQ(Box(&main, KivErrorBox::WB_OK, "").GetParent(), &dialog);
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "").GetParent(), nullptr) << "no parent stays none";
  Kiv_PopParentWindow(&dialog);
}

/// Notes the titles of windows that leave the stack.
class Leaving : public KivEventListener {
public:
  Leaving() { setEventHandler<&Leaving::note>(); }

  std::vector<std::string> titles;

private:
  void note(KivWindowStackChangedEvent * change) {
    if (!change->IsPushed())
      titles.emplace_back(change->GetTitle().c_str());
  }
};

TEST_F(BoxParts, LeaveTheStackWithTheirTitle) {
  Leaving leaving;
  std::string title;
  {
    Box const box(nullptr, KivErrorBox::WB_OK, "");
    title = box.GetText().c_str();
  }
  EXPECT_NE(title, "");
  EXPECT_EQ(leaving.titles, std::vector<std::string>{title});
}

TEST_F(BoxParts, StandOnTheStackOfParentWindowsAsLongAsTheyLive) {
  {
    Box box(nullptr, KivErrorBox::WB_OK, "");
    EXPECT_EQ(Kiv_GetTopWindow(0), nullptr);
    box.Show();
    EXPECT_EQ(Kiv_GetTopWindow(0), &box);
  }
  EXPECT_EQ(Kiv_GetTopWindow(0), nullptr);
}

} // namespace
