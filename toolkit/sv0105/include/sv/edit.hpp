#pragma once
/// \file
/// Edit: a field for text.

#include "sv/control.hpp"

namespace SV {

/// For Edit: the user can mark and copy the text, but not change it.
inline constexpr WinBits WB_READONLY = 0x200;

/// A field for one line of text. With WB_MULTILINE (of sv/fixed.hpp) it is one for many lines, which are broken between
/// words and scroll; Return begins a new line there, unless the field is read-only. Tab and Escape are the dialog's in both.
///
/// Lines end in "\n". The system takes seconds for one of some thousand characters. In a field for one line, each line end of a text that is set counts as a blank.
class SV_API Edit : public Control {
public:
  using ModifyHandler = std::function<void(Edit *)>;

  /// \param style  WB_BORDER, WB_GROUP, WB_MULTILINE and WB_READONLY, joined by |
  explicit Edit(Window * parent, WinBits style = WB_BORDER);
  ~Edit() override;

  String GetText() const override;
  /// It does not call the handler, and the limit for typing does not apply. A text ends at its first NUL.
  void SetText(String const & text) override;

  /// Most characters that the field can hold by typing and pasting, of which a line end takes two; at first 256, and
  /// 1,048,576 in a field for many lines. The change gives the former one.
  unsigned long ChangeMaxTextLen(unsigned long length);

  /// Marks all of the text: what is typed next replaces it.
  void SelectAll();

  /// The user has changed the text. The base calls the handler.
  virtual void Modify();

  /// The change gives the former one.
  ModifyHandler ChangeModifyHdl(ModifyHandler handler);

protected:
  bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) override;
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  WinBits style_;
  unsigned long maxTextLen_;
  ModifyHandler modifyHandler_;
  bool isSetting_ = false; ///< the change of the text is the program's
};

} // namespace SV
