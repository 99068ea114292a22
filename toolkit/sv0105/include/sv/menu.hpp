#pragma once
/// \file
/// Menus: the menu bar of a frame and the menus that hang from it.

#include "sv/export.hpp"
#include "sv/geometry.hpp"
#include "sv/lifetime.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <functional>
#include <vector>

namespace SV {

class MDIFrame;
class PopupMenu;

/// Items by position, counted from 0. An item has an identifier from 1 to MENU_ITEM_MAX_ID; a separator has the
/// identifier 0. In a text the first "~" marks the letter after it as the mnemonic, "~~" shows a "~".
inline constexpr unsigned short MENU_ITEM_MAX_ID = 0xDFFF; ///< the system needs those above for MDI windows
inline constexpr unsigned short MENU_APPEND = 0xFFFF;
inline constexpr unsigned short MENU_ITEM_NOT_FOUND = 0xFFFF;

/// What MenuBar and PopupMenu have in common. An operation on an item that is not there does nothing and gives false,
/// an empty text or null.
class SV_API Menu : public LinkHdl {
public:
  using SelectHandler = std::function<void(unsigned short id)>;

  Menu(Menu const &) = delete;
  Menu & operator=(Menu const &) = delete;
  /// Its popup menus, which it doesn't own, stay; what it hangs from keeps the item without it. If the user sees it, what
  /// is open of the menus closes.
  ~Menu() override;

  /// Called when the user chooses an item. The base calls the handler; without one, Select of the menu that this one
  /// hangs from.
  virtual void Select(unsigned short id);

  /// The change gives the former handler.
  SelectHandler ChangeSelectHdl(SelectHandler handler);

  /// \param position  where it shall stand; at the end for MENU_APPEND and all else that lies beyond it
  /// False for an identifier out of range or one that this menu has already.
  bool InsertItem(unsigned short id, String const & text, unsigned short position = MENU_APPEND);
  void InsertSeparator(unsigned short position = MENU_APPEND);
  bool RemoveItem(unsigned short position);

  unsigned short GetItemCount() const; ///< with separators

  /// 0 also where there is no item.
  unsigned short GetItemId(unsigned short position) const;
  /// MENU_ITEM_NOT_FOUND for an identifier that this menu doesn't have.
  unsigned short GetItemPos(unsigned short id) const;

  /// With its "~".
  String GetItemText(unsigned short id) const;
  bool SetItemText(unsigned short id, String const & text);

  /// The mark beside a text, which says that something is on or chosen. Items come without one.
  bool CheckItem(unsigned short id, bool isChecked = true);
  bool IsItemChecked(unsigned short id) const;

  /// A disabled item is gray and cannot be chosen. Items come enabled.
  bool EnableItem(unsigned short id, bool isEnabled = true);
  bool IsItemEnabled(unsigned short id) const;

  /// Hangs a menu under an item; null takes it away. A menu hangs in one place: it leaves its former one. False also
  /// when it would hang below itself.
  bool SetPopupMenu(unsigned short id, PopupMenu * popup);
  PopupMenu * GetPopupMenu(unsigned short id) const;

  /// The system's menu; null when it refused one: Application::Exception was called then.
  HMENU GetHMENU() const { return handle_; }

protected:
  explicit Menu(HMENU handle); ///< takes the system's menu over

  /// Takes it away from the item that it hangs under.
  void leave();

  /// The items on show have changed.
  virtual void Changed();

private:
  friend class MDIFrame;

  struct Item {
    unsigned long key; ///< by which the system's item is known again
    unsigned short id;
    String text;
    PopupMenu * popup;
    bool isChecked = false;
    bool isEnabled = true;
  };

  void insert(Item const & item, unsigned short position);
  void insertIntoSystem(std::size_t index);
  void removeFromSystem(std::size_t index);
  void removeForeignItems();
  int systemPosition(unsigned long key) const;
  Item const * find(unsigned short id) const;
  bool setState(unsigned short id, bool Item::*state, bool isOn);
  friend class PopupMenu;

  bool hangsBelow(Menu const & menu) const;
  bool dispatch(unsigned short id);

  HMENU handle_;
  Menu * above_ = nullptr;
  std::vector<Item> items_;
  SelectHandler handler_;
  detail::Lifetime lifetime_;
};

/// A menu that hangs under an item of another one, or is opened at a point.
class SV_API PopupMenu : public Menu {
public:
  PopupMenu(); ///< empty, and hanging nowhere
  ~PopupMenu() override;

  /// Opens it at a point of the screen and waits for the user's choice, for which Select of the menu that the item is in
  /// is called. A program whose windows are not in front has to bring one there before, or the menu stays open when the
  /// user clicks elsewhere.
  /// \return the identifier of the chosen item; 0 for none, for an empty menu, under window suppression, and while a menu
  /// is open already
  unsigned short Execute(Point const & position);
};

/// The menu bar of a frame, see MDIFrame::SetMenuBar.
class SV_API MenuBar : public Menu {
public:
  MenuBar(); ///< empty, and in no frame
  ~MenuBar() override;

protected:
  void Changed() override;

private:
  friend class MDIFrame;

  MDIFrame * frame_ = nullptr;
};

} // namespace SV
