#include "sv0105/controls/dialogtest.hpp"

namespace {

class Edit : public svtest::DialogTest {
protected:
  Edit() { dialog.ChangeOutputSizePixel({300, 150}); }

  /// A field in the dialog, with OK and Cancel after it.
  SV::Edit & make(SV::WinBits style) {
    edit = std::make_unique<SV::Edit>(&dialog, style);
    ok = std::make_unique<SV::OKButton>(&dialog);
    cancel = std::make_unique<SV::CancelButton>(&dialog);
    edit->ChangeModifyHdl([this](SV::Edit * of) { changes.push_back(textOf(of->GetText())); });
    edit->SetPosSizePixel({10, 10}, {200, 80});
    ok->SetPosSizePixel({10, 100}, {60, 20});
    cancel->SetPosSizePixel({80, 100}, {60, 20});
    for (SV::Control * control : std::initializer_list<SV::Control *>{edit.get(), ok.get(), cancel.get()})
      control->Show();
    return *edit;
  }

  void type(char const * text) {
    for (; *text; ++text)
      SendMessageA(edit->GethWnd(), WM_CHAR, static_cast<WPARAM>(static_cast<unsigned char>(*text)), 1);
  }

  void paste(char const * text) { SendMessageA(edit->GethWnd(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text)); }

  SV::ModalDialog dialog{nullptr};
  std::unique_ptr<SV::Edit> edit;
  std::unique_ptr<SV::OKButton> ok;
  std::unique_ptr<SV::CancelButton> cancel;
  std::vector<std::string> changes;
};

TEST_F(Edit, TakesWhatIsTypedAndReportsEachChangeOfTheUser) {
  make(SV::WB_BORDER);
  type("M\xFC");
  EXPECT_EQ(changes, (std::vector<std::string>{"M", "M\xFC"}));
  edit->SetText("Set by the program");
  EXPECT_EQ(changes.size(), 2u);
  EXPECT_STREQ(edit->GetText().c_str(), "Set by the program");
  type("!");
  EXPECT_EQ(changes.size(), 3u);
}

TEST_F(Edit, SelectedTextIsReplacedByWhatIsTyped) {
  make(SV::WB_BORDER).SetText("former");
  edit->SelectAll();
  type("n");
  EXPECT_STREQ(edit->GetText().c_str(), "n");
}

TEST_F(Edit, EndsItsLinesWithLineFeeds) {
  make(SV::WB_MULTILINE).SetText("one\ntwo\r\nthree\n");
  EXPECT_EQ(SendMessageA(edit->GethWnd(), EM_GETLINECOUNT, 0, 0), 4);
  EXPECT_STREQ(edit->GetText().c_str(), "one\ntwo\nthree\n");
  edit->SelectAll();
  type("a\rb");
  EXPECT_STREQ(edit->GetText().c_str(), "a\nb");
}

TEST_F(Edit, InOneLineEachLineEndIsABlank) {
  make(SV::WB_BORDER).SetText("one\ntwo\r\nthree");
  EXPECT_STREQ(edit->GetText().c_str(), "one two three");
}

TEST_F(Edit, HoldsAsManyCharactersAsItMay) {
  make(SV::WB_BORDER);
  paste(std::string(300, 'x').c_str());
  EXPECT_EQ(edit->GetText().Len(), 256);
  EXPECT_EQ(edit->ChangeMaxTextLen(4), 256u);
  EXPECT_EQ(edit->ChangeMaxTextLen(3), 4u);
  edit->SetText("set"); // as long as it may be
  edit->SelectAll();
  paste("abcdef");
  EXPECT_STREQ(edit->GetText().c_str(), "abc");
  edit->SetText("longer than that");
  EXPECT_STREQ(edit->GetText().c_str(), "longer than that");
}

TEST_F(Edit, ForManyLinesHoldsAMillionCharactersInLines) {
  make(SV::WB_MULTILINE);
  std::string text;
  while (text.size() < 1'000'000)
    text += "A line of M\xFCller's.\n";
  edit->SetText(text.c_str());
  EXPECT_EQ(textOf(edit->GetText()), text);
  EXPECT_EQ(edit->ChangeMaxTextLen(5), 1'048'576u);
}

TEST_F(Edit, ReadOnlyCanBeMarkedAndNotChanged) {
  for (SV::WinBits const style : {SV::WinBits{SV::WB_READONLY}, SV::WinBits{SV::WB_READONLY | SV::WB_MULTILINE}}) {
    make(style).SetText("to read");
    edit->SelectAll();
    type("x");
    EXPECT_STREQ(edit->GetText().c_str(), "to read");
    DWORD first = 9;
    DWORD last = 0;
    SendMessageA(edit->GethWnd(), EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(last, 7u);
  }
  EXPECT_TRUE(changes.empty());
}

TEST_F(Edit, LeavesTabAndEscapeToTheDialog) {
  for (SV::WinBits const style : {SV::WB_BORDER, SV::WB_MULTILINE}) {
    make(style);
    script->key(VK_TAB).then([this] { EXPECT_EQ(GetFocus(), ok->GethWnd()); }).then([this] { edit->GrabFocus(); });
    script->key(VK_ESCAPE);
    EXPECT_EQ(dialog.Execute(), SV::RET_CANCEL) << style;
    EXPECT_STREQ(edit->GetText().c_str(), "");
  }
}

TEST_F(Edit, ReturnPressesTheDefaultButtonExceptWhereLinesAreTyped) {
  for (SV::WinBits const style : {SV::WB_BORDER, SV::WB_READONLY, SV::WB_READONLY | SV::WB_MULTILINE}) {
    make(style);
    script->key(VK_RETURN);
    EXPECT_EQ(dialog.Execute(), SV::RET_OK) << style;
  }
  make(SV::WB_MULTILINE);
  script->key(VK_RETURN).then([this] { dialog.EndDialog(7); });
  EXPECT_EQ(dialog.Execute(), 7);
  EXPECT_STREQ(edit->GetText().c_str(), "\n");
}

TEST_F(Edit, InOneLineAsksTheDialogForTheSameKeysAsTheSystemsField) {
  make(SV::WB_BORDER);
  HWND const system =
      CreateWindowExA(0, "EDIT", "", WS_CHILD, 0, 0, 10, 10, dialog.GethWnd(), nullptr, nullptr, nullptr);
  for (WPARAM const key : {VK_RETURN, VK_TAB, VK_ESCAPE}) {
    MSG message = {nullptr, WM_KEYDOWN, key, 0, 0, {}};
    auto const codeOf = [&](HWND field) {
      message.hwnd = field;
      return SendMessageA(field, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message));
    };
    EXPECT_EQ(codeOf(edit->GethWnd()), codeOf(system)) << key;
  }
}

TEST_F(Edit, HasAScrollBarForManyLinesAlone) {
  make(SV::WB_MULTILINE);
  EXPECT_NE(GetWindowLongA(edit->GethWnd(), GWL_STYLE) & WS_VSCROLL, 0);
  make(SV::WB_BORDER);
  EXPECT_EQ(GetWindowLongA(edit->GethWnd(), GWL_STYLE) & WS_VSCROLL, 0);
}

TEST_F(Edit, MayDieInItsHandler) {
  make(SV::WB_BORDER);
  edit->ChangeModifyHdl([this](SV::Edit *) { edit.reset(); });
  SendMessageA(edit->GethWnd(), WM_CHAR, 'x', 1);
  EXPECT_EQ(edit, nullptr);
}

} // namespace
