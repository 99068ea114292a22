#include "sv0105/controls/dialogtest.hpp"
#include "sv0105/gdicount.hpp"

#include "support/data/files.hpp"
#include "support/windows/pixels.hpp"
#include "support/windows/windows.hpp"

namespace {

using SV::MessBox;

class MessBoxTest : public svtest::DialogTest {
protected:
  /// The labels of the buttons from left to right, as the system has them.
  static std::vector<std::string> labelsOf(HWND box) {
    std::vector<std::string> labels;
    for (HWND child = nullptr; (child = FindWindowExA(box, child, "BUTTON", nullptr)) != nullptr;) {
      char text[64] = "";
      GetWindowTextA(child, text, sizeof text);
      labels.emplace_back(text);
    }
    return labels;
  }

  static SV::Size screen() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }
};

struct Row {
  SV::WinBits style;
  std::vector<long> results;
};

TEST_F(MessBoxTest, HasTheButtonsOfItsStyleAndTheirResults) {
  Row const rows[] = {{0, {SV::RET_OK}},
                      {SV::WB_OK, {SV::RET_OK}},
                      {SV::WB_OK_CANCEL, {SV::RET_OK, SV::RET_CANCEL}},
                      {SV::WB_YES_NO, {SV::RET_YES, SV::RET_NO}},
                      {SV::WB_YES_NO_CANCEL, {SV::RET_YES, SV::RET_NO, SV::RET_CANCEL}},
                      {SV::WB_RETRY_CANCEL, {SV::RET_RETRY, SV::RET_CANCEL}}};
  for (Row const & row : rows)
    for (std::size_t i = 0; i < row.results.size(); ++i) {
      MessBox box(nullptr, row.style, "Text");
      ASSERT_EQ(labelsOf(box.GethWnd()).size(), row.results.size());
      HWND button = nullptr;
      for (std::size_t n = 0; n <= i; ++n)
        button = FindWindowExA(box.GethWnd(), button, "BUTTON", nullptr);
      script->then([button] { svtest::postClick(button); });
      EXPECT_EQ(box.Execute(), row.results[i]) << row.style;
    }
}

TEST_F(MessBoxTest, BeginsWithItsDefaultButton) {
  struct {
    SV::WinBits style;
    long result;
  } const rows[] = {{SV::WB_YES_NO, SV::RET_YES},
                    {SV::WB_YES_NO | SV::WB_DEF_NO, SV::RET_NO},
                    {SV::WB_OK_CANCEL | SV::WB_DEF_CANCEL, SV::RET_CANCEL},
                    {SV::WB_RETRY_CANCEL | SV::WB_DEF_RETRY, SV::RET_RETRY},
                    {SV::WB_OK | SV::WB_DEF_YES, SV::RET_OK}};
  for (auto const & row : rows) {
    MessBox box(nullptr, row.style, "Text");
    script->key(VK_RETURN);
    EXPECT_EQ(box.Execute(), row.result) << row.style;
  }
}

TEST_F(MessBoxTest, IsCancelledByEscapeInEveryStyle) {
  for (SV::WinBits style : {SV::WB_OK, SV::WB_YES_NO, SV::WB_YES_NO_CANCEL}) {
    MessBox box(nullptr, style, "Text");
    script->key(VK_ESCAPE);
    EXPECT_EQ(box.Execute(), SV::RET_CANCEL) << style;
  }
}

TEST_F(MessBoxTest, BearsTheLabelsOfTheApplicationAndThoseItIsGiven) {
  SV::International labels;
  labels.ChangeOKButtonText("Gut");
  labels.ChangeCancelButtonText("Weg & fort");
  SV::Application::ChangeAppInternational(labels);
  MessBox const standard(nullptr, SV::WB_OK_CANCEL, "Text");
  EXPECT_EQ(labelsOf(standard.GethWnd()), (std::vector<std::string>{"Gut", "Weg && fort"}));
  MessBox box(nullptr, SV::WB_YES_NO, "Text");
  box.SetButtonText(SV::RET_YES, "~Aber ja");
  box.SetButtonText(SV::RET_RETRY, "nowhere");
  EXPECT_EQ(labelsOf(box.GethWnd())[0], "&Aber ja");
}

TEST_F(MessBoxTest, TakesItsTitleFromTheApplicationWindow) {
  SV::Window parent(nullptr, SV::WB_TITLE);
  parent.SetText("Parent");
  EXPECT_STREQ(MessBox(&parent, SV::WB_OK, "Text").GetText().c_str(), "Parent");
  SV::Window main(nullptr, SV::WB_TITLE);
  main.SetText("Main");
  SV::Application::SetAppWindow(&main);
  EXPECT_STREQ(MessBox(&parent, SV::WB_OK, "Text").GetText().c_str(), "Main");
}

TEST_F(MessBoxTest, ShowsEveryCharacterOfItsText) {
  MessBox box(nullptr, SV::WB_OK, "a~b & c~~d M\xFCller");
  HWND label = nullptr;
  std::string shown;
  while ((label = FindWindowExA(box.GethWnd(), label, "STATIC", nullptr)) != nullptr) {
    char text[64] = "";
    GetWindowTextA(label, text, sizeof text);
    shown += text;
  }
  EXPECT_EQ(shown, "a~b && c~~d M\xFCller");
  EXPECT_STREQ(box.GetMessText().c_str(), "a~b & c~~d M\xFCller");
}

/// How far a line reaches to the right when it is drawn in a font.
long drawnWidth(HFONT font, char const * text) {
  constexpr int width = 1000;
  HDC const device = CreateCompatibleDC(nullptr);
  HBITMAP const bitmap = CreateBitmap(width, 40, 1, 32, nullptr);
  HGDIOBJ const formerBitmap = SelectObject(device, bitmap);
  HGDIOBJ const formerFont = SelectObject(device, font);
  PatBlt(device, 0, 0, width, 40, WHITENESS);
  RECT area = {0, 0, width, 40};
  DrawTextA(device, text, -1, &area, DT_NOPREFIX);
  support::Pixels const pixels = support::readPixels(device, area);
  SelectObject(device, formerFont);
  SelectObject(device, formerBitmap);
  DeleteObject(bitmap);
  DeleteDC(device);
  for (int x = width - 1; x >= 0; --x)
    for (int y = 0; y < 40; ++y)
      if (pixels.at(x, y) != 0xFFFFFF)
        return x + 1;
  return 0;
}

TEST_F(MessBoxTest, HasRoomForALineThatIsDrawnWiderThanItIsMeasured) {
  constexpr char line[] = "The program will crash at once. It leaves a crash report and a dump in the folder";
  SV::Font const former = SV::Application::GetAppFont();
  for (long const height : {10, 11, 12, 13, 20}) {
    SV::Application::ChangeAppFont(SV::Font("Tahoma", {0, height}));
    SV::QueryBox box(nullptr, SV::WB_YES_NO, line);
    script->then([&] {
      HWND const icon = FindWindowExA(box.GethWnd(), nullptr, "STATIC", nullptr);
      HWND const label = FindWindowExA(box.GethWnd(), icon, "STATIC", nullptr);
      RECT area = {};
      GetClientRect(label, &area);
      EXPECT_LE(drawnWidth(reinterpret_cast<HFONT>(SendMessageA(label, WM_GETFONT, 0, 0)), line), area.right) << height;
      EXPECT_LT(box.ScreenToOutputPixel({support::windowRectangle(label).right, 0}).x, box.GetOutputSizePixel().width);
      box.EndDialog();
    });
    box.Execute();
  }
  SV::Application::ChangeAppFont(former);
}

TEST_F(MessBoxTest, FitsOnTheScreenWhateverItsText) {
  for (std::string const & text : {std::string(), std::string(1'000'000, 'x'), std::string(3000, '\n'),
                                   std::string("word ") + std::string(20'000, ' ') + "end"}) {
    SV::WarningBox box(nullptr, SV::WB_OK, text.c_str());
    script->then([&] {
      EXPECT_LE(box.GetSizePixel().height, screen().height) << text.size();
      EXPECT_EQ(box.GetMessText().Len(), static_cast<int>(text.size()));
      box.EndDialog();
    });
    box.Execute();
  }
}

TEST_F(MessBoxTest, SwitchesTheWaitPointerOffWhileItIsOpen) {
  SV::Application::Wait(3);
  SV::InfoBox box(nullptr, "Text");
  script->then([&] {
    EXPECT_EQ(SV::Application::IsWait(), 0);
    box.EndDialog();
  });
  box.Execute();
  EXPECT_EQ(SV::Application::IsWait(), 3);
}

TEST_F(MessBoxTest, GoesToTheLogUnderSuppression) {
  SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt");
  SV::Application::SetModalDialogSuppression(true);
  SV::QueryBox box(nullptr, SV::WB_YES_NO, "Delete?");
  box.SetText("Models");
  EXPECT_EQ(box.Execute(), SV::RET_CANCEL);
  EXPECT_EQ(support::readFile("dialogs.txt").value_or(""), "Models\r\nDelete?\r\n");
  EXPECT_TRUE(visibleTopLevelWindows().empty());
}

TEST_F(MessBoxTest, TakesItsTextFromAResource) {
  SV::ResMgr manager((support::binFolder() + "testres\\first72.dll").c_str());
  SV::Resource::SetResManager(&manager);
  SV::ResId const id(0x2000001);
  SV::String const text = SV::Resource::LoadString(id);
  ASSERT_GT(text.Len(), 0);
  MessBox const plain(nullptr, id);
  EXPECT_EQ(plain.GetMessText(), text);
  EXPECT_EQ(labelsOf(plain.GethWnd()).size(), 1u) << "OK";
  EXPECT_EQ(SV::InfoBox(nullptr, id).GetMessText(), text);
  SV::QueryBox const query(nullptr, id);
  EXPECT_EQ(query.GetMessText(), text);
  EXPECT_EQ(labelsOf(query.GethWnd()).size(), 2u) << "yes and no";
  EXPECT_EQ(labelsOf(SV::WarningBox(nullptr, id).GethWnd()).size(), 1u);
  SV::Resource::SetResManager(nullptr);
}

TEST_F(MessBoxTest, KeepsNothingOfTheSystemsAfterIt) {
  svtest::countGdiObjects();
  for (int i = 0; i < 3; ++i) {
    SV::WarningBox box(nullptr, SV::WB_OK, "Text");
    script->then([&] { box.EndDialog(); });
    box.Execute();
  }
  EXPECT_EQ(svtest::gdiObjects(), 0);
}

} // namespace
