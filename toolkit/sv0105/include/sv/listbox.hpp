#pragma once
/// \file
/// ListBox: a list of texts, of which one is selected.

#include "sv/control.hpp"

namespace SV {

/// For ListBox: one line that opens the list below it.
inline constexpr WinBits WB_DROPDOWN = 0x800;

inline constexpr long LISTBOX_APPEND = -1;
inline constexpr long LISTBOX_ENTRY_NOTFOUND = -1;

/// Entries by position, counted from 0, in the order in which they were inserted. An operation on a position that is not
/// there does nothing and gives false or the empty string. The height of one with WB_DROPDOWN is that of the open list;
/// the closed one is as high as a field of 13 units of dialogs in its font.
class SV_API ListBox : public Control {
public:
  using SelectHandler = std::function<void(ListBox *)>;

  explicit ListBox(Window * parent, WinBits style = WB_BORDER); ///< WB_BORDER, WB_GROUP and WB_DROPDOWN, joined by |

  /// \param position  where it shall stand; at the end for LISTBOX_APPEND and all else that lies outside
  /// The position that it has got, LISTBOX_ENTRY_NOTFOUND when the system refuses. A text ends at its first NUL.
  long InsertEntry(String const & text, long position = LISTBOX_APPEND);
  bool RemoveEntry(long position);
  void Clear();

  long GetEntryCount() const; ///< 0 for an empty list
  /// The text at a position, counted from 0; the empty string for one outside.
  String GetEntry(long position) const;
  /// The first one with that text, case-sensitive; LISTBOX_ENTRY_NOTFOUND for none.
  long GetEntryPos(String const & text) const;

  /// Selects it in place of the one that was selected, without calling the handler.
  bool SelectEntryPos(long position);
  void SetNoSelection();
  long GetSelectEntryPos() const; ///< LISTBOX_ENTRY_NOTFOUND for none

  /// The user has selected another entry. The base calls the handler.
  virtual void Select();

  /// The change gives the former one.
  SelectHandler ChangeSelectHdl(SelectHandler handler);

protected:
  bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) override;
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  void fitClosedHeight();
  long long send(unsigned listMessage, unsigned boxMessage, unsigned long long wParam = 0, long long lParam = 0) const;

  SelectHandler selectHandler_;
  bool isDropDown_;
};

} // namespace SV
