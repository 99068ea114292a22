#include "sv/menu.hpp"

#include "application/toolkit.hpp"
#include "controls/label.hpp"
#include "sv/mdi.hpp"

#include <algorithm>
#include <utility>

namespace SV {

namespace {

HMENU checked(HMENU menu) {
  if (!menu)
    detail::raiseException(EXC_SYSTEM_OBJECT_NOT_CREATED, GetLastError());
  return menu;
}

/// Whether the user sees the menu: each open one has a window of its own.
bool isOpen(HMENU menu) {
  constexpr char kMenuClass[] = "#32768";
  constexpr UINT kGetMenu = 0x1E1; // MN_GETHMENU
  for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, kMenuClass, nullptr)) != nullptr;)
    if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() && IsWindowVisible(window) &&
        reinterpret_cast<HMENU>(SendMessageA(window, kGetMenu, 0, 0)) == menu)
      return true;
  return false;
}

/// The key of the system's item at that position, 0 where there is none.
ULONG_PTR keyAt(HMENU menu, int position) {
  MENUITEMINFOA info = {};
  info.cbSize = sizeof info;
  info.fMask = MIIM_DATA;
  return GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info) ? info.dwItemData : 0;
}

UINT systemState(bool isChecked, bool isEnabled) {
  return static_cast<UINT>((isChecked ? MFS_CHECKED : MFS_UNCHECKED) | (isEnabled ? MFS_ENABLED : MFS_DISABLED));
}

unsigned long nextKey() {
  static unsigned long key = 0;
  return ++key;
}

} // namespace

Menu::Menu(HMENU handle) : handle_(checked(handle)) {}

Menu::~Menu() {
  if (isOpen(handle_))
    EndMenu();
  for (Item const & item : items_)
    if (item.popup)
      item.popup->above_ = nullptr;
  // The system deletes a menu with all that hang below it.
  while (!items_.empty()) {
    removeFromSystem(items_.size() - 1);
    items_.pop_back();
  }
  if (handle_)
    DestroyMenu(handle_);
}

void Menu::Select(unsigned short id) {
  if (SelectHandler const handler = handler_) // a copy: it may be changed while it runs
    handler(id);
  else if (above_)
    above_->Select(id);
}

Menu::SelectHandler Menu::ChangeSelectHdl(SelectHandler handler) { return std::exchange(handler_, std::move(handler)); }

void Menu::Changed() {}

bool Menu::InsertItem(unsigned short id, String const & text, unsigned short position) {
  if (id == 0 || id > MENU_ITEM_MAX_ID || find(id))
    return false;
  insert({nextKey(), id, text, nullptr}, position);
  return true;
}

void Menu::InsertSeparator(unsigned short position) { insert({nextKey(), 0, String(), nullptr}, position); }

bool Menu::RemoveItem(unsigned short position) {
  if (position >= items_.size())
    return false;
  removeFromSystem(position);
  if (PopupMenu * const popup = items_[position].popup)
    popup->above_ = nullptr;
  items_.erase(items_.begin() + position);
  Changed();
  return true;
}

unsigned short Menu::GetItemCount() const { return static_cast<unsigned short>(items_.size()); }

unsigned short Menu::GetItemId(unsigned short position) const {
  return position < items_.size() ? items_[position].id : static_cast<unsigned short>(0);
}

unsigned short Menu::GetItemPos(unsigned short id) const {
  Item const * const item = find(id);
  return item ? static_cast<unsigned short>(item - items_.data()) : MENU_ITEM_NOT_FOUND;
}

String Menu::GetItemText(unsigned short id) const {
  Item const * const item = find(id);
  return item ? item->text : String();
}

bool Menu::SetItemText(unsigned short id, String const & text) {
  unsigned short const position = GetItemPos(id);
  if (position == MENU_ITEM_NOT_FOUND)
    return false;
  removeFromSystem(position);
  items_[position].text = text;
  insertIntoSystem(position);
  Changed();
  return true;
}

bool Menu::CheckItem(unsigned short id, bool isChecked) { return setState(id, &Item::isChecked, isChecked); }

bool Menu::IsItemChecked(unsigned short id) const {
  Item const * const item = find(id);
  return item && item->isChecked;
}

bool Menu::EnableItem(unsigned short id, bool isEnabled) { return setState(id, &Item::isEnabled, isEnabled); }

bool Menu::IsItemEnabled(unsigned short id) const {
  Item const * const item = find(id);
  return item && item->isEnabled;
}

bool Menu::setState(unsigned short id, bool Item::*state, bool isOn) {
  unsigned short const position = GetItemPos(id);
  if (position == MENU_ITEM_NOT_FOUND)
    return false;
  items_[position].*state = isOn;
  MENUITEMINFOA info = {};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STATE;
  info.fState = systemState(items_[position].isChecked, items_[position].isEnabled);
  SetMenuItemInfoA(handle_, static_cast<UINT>(systemPosition(items_[position].key)), TRUE, &info);
  Changed();
  return true;
}

bool Menu::SetPopupMenu(unsigned short id, PopupMenu * popup) {
  unsigned short const position = GetItemPos(id);
  if (position == MENU_ITEM_NOT_FOUND || (popup && hangsBelow(*popup)))
    return false;
  if (popup)
    popup->leave();
  removeFromSystem(position);
  if (PopupMenu * const former = std::exchange(items_[position].popup, popup))
    former->above_ = nullptr;
  if (popup)
    popup->above_ = this;
  insertIntoSystem(position);
  Changed();
  return true;
}

PopupMenu * Menu::GetPopupMenu(unsigned short id) const {
  Item const * const item = find(id);
  return item ? item->popup : nullptr;
}

void Menu::insert(Item const & item, unsigned short position) {
  std::size_t const index = std::min<std::size_t>(position, items_.size());
  items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index), item);
  insertIntoSystem(index);
  Changed();
}

void Menu::insertIntoSystem(std::size_t index) {
  Item const & item = items_[index];
  String text = detail::systemLabel(item.text);
  text.makeUnique();
  MENUITEMINFOA info = {};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_DATA | MIIM_SUBMENU | MIIM_STATE;
  info.fType = item.id == 0 ? MFT_SEPARATOR : MFT_STRING;
  info.wID = item.id;
  info.fState = systemState(item.isChecked, item.isEnabled);
  info.dwItemData = item.key;
  info.hSubMenu = item.popup ? item.popup->handle_ : nullptr;
  if (item.id != 0) {
    info.fMask |= MIIM_STRING;
    info.dwTypeData = text.writable();
  }
  // After the item before it: the system puts items of its own into the bar above a maximised MDI window.
  int const before = index > 0 ? systemPosition(items_[index - 1].key) : -1;
  int const next = index == 0 && items_.size() > 1 ? systemPosition(items_[1].key) : -1;
  UINT const position = static_cast<UINT>(before >= 0 ? before + 1 : std::max(next, 0));
  InsertMenuItemA(handle_, position, TRUE, &info);
}

void Menu::removeFromSystem(std::size_t index) {
  int const position = systemPosition(items_[index].key);
  if (position >= 0)
    RemoveMenu(handle_, static_cast<UINT>(position), MF_BYPOSITION);
}

void Menu::removeForeignItems() {
  for (int i = GetMenuItemCount(handle_); i-- > 0;) {
    ULONG_PTR const key = keyAt(handle_, i);
    if (std::none_of(items_.begin(), items_.end(), [key](Item const & item) { return item.key == key; }))
      RemoveMenu(handle_, static_cast<UINT>(i), MF_BYPOSITION);
  }
}

int Menu::systemPosition(unsigned long key) const {
  int const count = GetMenuItemCount(handle_);
  for (int i = 0; i < count; ++i)
    if (keyAt(handle_, i) == key)
      return i;
  return -1;
}

Menu::Item const * Menu::find(unsigned short id) const {
  auto const item = std::find_if(items_.begin(), items_.end(), [id](Item const & i) { return i.id == id; });
  return id != 0 && item != items_.end() ? &*item : nullptr;
}

void Menu::leave() {
  if (!above_)
    return;
  auto const item =
      std::find_if(above_->items_.begin(), above_->items_.end(), [this](Item const & i) { return i.popup == this; });
  above_->SetPopupMenu(item->id, nullptr);
}

/// Whether this is \p menu or hangs from it.
bool Menu::hangsBelow(Menu const & menu) const {
  for (Menu const * above = this; above; above = above->above_)
    if (above == &menu)
      return true;
  return false;
}

bool Menu::dispatch(unsigned short id) {
  for (Item const & item : items_) {
    if (item.popup) {
      if (item.popup->dispatch(id))
        return true;
    } else if (item.id == id && id != 0) {
      Select(id);
      return true;
    }
  }
  return false;
}

PopupMenu::PopupMenu() : Menu(CreatePopupMenu()) {}

PopupMenu::~PopupMenu() { leave(); }

unsigned short PopupMenu::Execute(Point const & position) {
  HWND const owner = detail::toolkit().listener;
  if (GetItemCount() == 0 || Application::IsShowWindowSuppression() || !owner)
    return 0;
  detail::Lifetime::Watch const alive(lifetime_);
  BOOL const chosen = TrackPopupMenuEx(GetHMENU(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, position.x,
                                       position.y, owner, nullptr);
  // Otherwise the next menu of a program that has just come to the front would close at once.
  PostMessageA(owner, WM_NULL, 0, 0);
  auto const id = static_cast<unsigned short>(chosen);
  return alive && id != 0 && dispatch(id) ? id : static_cast<unsigned short>(0);
}

MenuBar::MenuBar() : Menu(CreateMenu()) {}

MenuBar::~MenuBar() {
  if (frame_)
    frame_->SetMenuBar(nullptr);
}

void MenuBar::Changed() {
  if (frame_)
    DrawMenuBar(frame_->GethWnd());
}

} // namespace SV
