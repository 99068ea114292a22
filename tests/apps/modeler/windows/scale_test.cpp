// At 100, 150 and 200 percent, in both looks and languages: what the sample product shows has room for its texts.
#include "apps/modeler/in_process.hpp"
#include "apps/modeler/languages.hpp"
#include "background/userfacts.hpp"
#include "dialogs/finddialog.hpp"
#include "dialogs/requestdialog.hpp"
#include "dialogs/userdialog.hpp"
#include "support/imports/import_hook.hpp"
#include "support/windows/windows.hpp"
#include "texts/diagnosticstexts.hpp"
#include "texts/viewtexts.hpp"
#include "windows/parts/modelpanes.hpp"
#include "windows/parts/statusbar.hpp"
#include "windows/parts/toolbar.hpp"

#include <tuple>

namespace modeler {
namespace {

int dotsPerInch = 96;

/// The system's answer, in the scale of the test.
int WINAPI deviceCaps(HDC device, int capability) {
  return capability == LOGPIXELSX || capability == LOGPIXELSY ? dotsPerInch : GetDeviceCaps(device, capability);
}

/// The library asks for the scale once in a process, so each of these runs in one of its own, as ctest has it.
class ModelerScale : public InProcess, public testing::WithParamInterface<std::tuple<int, bool, unsigned short>> {
protected:
  ModelerScale() {
    dotsPerInch = 96 * std::get<0>(GetParam()) / 100;
    for (HMODULE const module : support::ownModules())
      support::replaceImports(module, "GDI32.dll", {{"GetDeviceCaps", reinterpret_cast<void *>(deviceCaps)}});
    EXPECT_EQ(Kiv_GetSystemDPIScaleX(), std::get<0>(GetParam()) / 100.0) << "run it by itself";
    constexpr long kFontHeight = 12; // that of the program, at 96 dots per inch
    SV::Application::ChangeAppFont(SV::Font("Segoe UI", {0, kFontHeight * std::get<0>(GetParam()) / 100}));
    KivThemeManager::Instance().SetVisualStylesXPEnabled(std::get<1>(GetParam()));
    KivThemeManager::Instance().SetCurrentTheme("Modern");
    useTexts(std::get<2>(GetParam()));
    frame.emplace(nullptr);
    frame->ChangeOutputSizePixel({1000, 600});
  }
  ~ModelerScale() override { frame.reset(); }

  std::optional<SV::Window> frame;
};

std::string withoutMnemonic(std::string const & label) {
  std::string text;
  for (std::size_t i = 0; i < label.size(); ++i)
    if (label[i] != '&' || (i + 1 < label.size() && label[i + 1] == '&' && ++i != 0))
      text += label[i];
  return text;
}

RECT placeIn(HWND parent, HWND child) {
  RECT area = {};
  GetWindowRect(child, &area);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT *>(&area), 2);
  return area;
}

/// The size that the text of a control takes at least, broken where it is in as many lines as there is room for.
SIZE neededBy(HWND control, std::string const & text, LONG width) {
  HDC const device = GetDC(control);
  HGDIOBJ const former = SelectObject(device, reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)));
  RECT area = {0, 0, width, 0};
  DrawTextA(device, text.c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
  SelectObject(device, former);
  ReleaseDC(control, device);
  return {area.right, area.bottom};
}

/// Each control lies in the dialog, on no other one, and has room for its text; so has the screen for the dialog.
void expectRoom(SV::Window const & dialog) {
  RECT whole = {};
  GetClientRect(dialog.GethWnd(), &whole);
  std::vector<RECT> places;
  for (HWND const child : support::children(dialog.GethWnd())) {
    RECT const area = placeIn(dialog.GethWnd(), child);
    std::string const text = withoutMnemonic(support::windowText(child));
    SCOPED_TRACE(text);
    EXPECT_TRUE(area.left >= 0 && area.top >= 0 && area.right <= whole.right && area.bottom <= whole.bottom);
    for (RECT const & other : places) {
      RECT both = {};
      IntersectRect(&both, &area, &other);
      EXPECT_TRUE(both.right - both.left <= 1 || both.bottom - both.top <= 1) << "places are rounded to pixels";
    }
    places.push_back(area);
    std::string const kind = support::windowClass(child);
    if (kind == "Edit" || kind == "ComboBox" || text.empty())
      continue;
    LONG const frame = kind == "Button" ? 8 : 0;
    SIZE const needed = neededBy(child, text, area.right - area.left - frame);
    EXPECT_LE(needed.cx + frame, area.right - area.left);
    EXPECT_LE(needed.cy, area.bottom - area.top);
  }
  EXPECT_LE(dialog.GetSizePixel().width, GetSystemMetrics(SM_CXSCREEN));
  EXPECT_LE(dialog.GetSizePixel().height, GetSystemMetrics(SM_CYSCREEN));
}

void expectDialogsHaveRoomForTheirTexts() {
  expectRoom(RequestDialog(nullptr, "http://", [](auto const &, auto const &) {}));
  expectRoom(UserDialog(nullptr, userFacts()));
  SV::Window owner(nullptr);
  expectRoom(FindDialog(owner, Search()));
}

/// Names that follow the language, as those of the program.
ISequence<ToolButton> buttons() {
  ISequence<ToolButton> result;
  for (Text const name : {Text::Open, Text::OpenSample, Text::SaveAs, kOutline, kNotes, kClassic, kModern})
    result.push_back({[name] { return plain(text(name)); }, [] {}, [] { return false; }, name == kOutline});
  return result;
}

void expectToolBarHasRoomForItsButtonsInAnyWidth(SV::Window & frame) {
  ToolBar const bar(frame, buttons());
  SV::VirtualDevice ruler;
  ruler.ChangeFont(bar.GetFont());
  long rows = 0;
  for (long const width : {3000L, 1200L, 800L, 400L}) {
    ISequence<SV::Rectangle> const places = bar.GetPlaces(width);
    ASSERT_EQ(places.size(), 7u);
    for (std::size_t i = 0; i < places.size(); ++i) {
      EXPECT_GE(places[i].GetWidth(), ruler.GetTextSize(buttons()[i].name()).width + 8) << i;
      EXPECT_GE(places[i].GetHeight(), ruler.GetTextSize("Ag").height) << i;
      EXPECT_LT(places[i].Right(), width) << i;
      EXPECT_LT(places[i].Bottom(), bar.GetHeight(width)) << i;
      EXPECT_TRUE(i == 0 || places[i].Left() > places[i - 1].Right() || places[i].Top() > places[i - 1].Bottom()) << i;
    }
    EXPECT_GE(bar.GetHeight(width), rows);
    rows = bar.GetHeight(width);
  }
}

ProcessModel longNames() {
  ProcessModel model;
  model.name = "Handling of an order that came in by telephone in the night";
  model.nodes.push_back({NodeKind::Start, "a", "A node whose text has more words than a pane has room for", 0});
  model.nodes.push_back({NodeKind::Activity, "b", SV::String(std::string(200, 'W').c_str()), 20});
  return model;
}

/// Shows its lines.
template <class Pane> class Opened : public Pane {
public:
  using Pane::lines;
  using Pane::Pane;
  using Pane::textSize;
};

/// What is wider than the pane is scrolled to.
template <class Pane> void expectLinesAreReached(Opened<Pane> & pane) {
  for (long const width : {1000L, 100L}) {
    pane.SetPosSizePixel({0, 0}, {width * dotsPerInch / 96, 400});
    SV::Bitmap const bitmap(pane.GetOutputSizePixel());
    HDC const memory = CreateCompatibleDC(nullptr);
    HGDIOBJ const former = SelectObject(memory, bitmap.GethBitmap());
    {
      SV::OutputDevice device(memory);
      pane.Paint(device, {{0, 0}, pane.GetOutputSizePixel()});
    }
    SelectObject(memory, former);
    DeleteDC(memory);
    SCROLLINFO bar = {};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_RANGE;
    GetScrollInfo(pane.GethWnd(), SB_HORZ, &bar);
    for (auto const & line : pane.lines())
      EXPECT_LE(pane.textSize(line.text).width, std::max<long>(pane.GetOutputSizePixel().width, bar.nMax + 1))
          << line.text.c_str();
  }
}

void expectPanesLeadToAllOfTheirLines(SV::Window & frame) {
  ProcessModel const model = longNames();
  ProcessModel const * front = &model;
  Opened<OutlinePane> outline(
      frame, [&front] { return front; }, Pane::Handlers());
  Opened<NotesPane> notes(
      frame, [&front] { return front; }, Pane::Handlers());
  expectLinesAreReached(outline);
  expectLinesAreReached(notes);
  front = nullptr;
  expectLinesAreReached(outline);
  expectLinesAreReached(notes);
}

TEST_P(ModelerScale, LeavesRoomForAllTexts) {
  expectDialogsHaveRoomForTheirTexts();
  expectToolBarHasRoomForItsButtonsInAnyWidth(*frame);
  expectPanesLeadToAllOfTheirLines(*frame);
}

INSTANTIATE_TEST_SUITE_P(, ModelerScale,
                         testing::Combine(testing::Values(100, 150, 200), testing::Bool(),
                                          testing::Values(kGerman, kEnglish)),
                         [](auto const & row) {
                           return std::to_string(std::get<0>(row.param)) +
                                  (std::get<1>(row.param) ? "Styles" : "Plain") +
                                  (std::get<2>(row.param) == kGerman ? "German" : "English");
                         });

} // namespace
} // namespace modeler
