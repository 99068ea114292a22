#pragma once
/// \file
/// Accelerator: keys that work whatever window has the focus.

#include "sv/export.hpp"
#include "sv/keycodes.hpp"
#include "sv/lifetime.hpp"
#include "tools/object.hpp"

#include <functional>
#include <vector>

namespace SV {

/// A table of keys. Application::InsertAccel puts it into effect; its keys are then handled before any window, dialog or menu gets
/// them. Main thread.
///
/// \code
///   accelerator.InsertItem(1, SV::KEY_CONTROL | SV::KEY_A + ('S' - 'A'));
///   accelerator.PushSelectHdl([this](SV::Accelerator *) { return Save() ? 1L : 0L; });
///   SV::Application::InsertAccel(&accelerator);
/// \endcode
class SV_API Accelerator : public LinkHdl {
public:
  /// \return non-zero if the key has been handled
  using SelectHandler = std::function<long(Accelerator *)>;

  Accelerator(); ///< without keys
  Accelerator(Accelerator const &) = delete;
  Accelerator & operator=(Accelerator const &) = delete;
  /// Removes it from the application.
  ~Accelerator() override;

  /// \param code  the key with its modifiers; the key does not match with any other modifiers
  /// \return false for code 0, and for a key or an identifier that the table already has
  bool InsertItem(unsigned short id, KeyCode code);
  bool RemoveItem(unsigned short id); ///< false if there is no such item
  unsigned short GetItemCount() const;

  /// The handler that was pushed last is called first. If it returns 0, the one before it is called, and so on. If all return 0,
  /// the key goes where it would have gone without this object. Popping without a handler does nothing.
  void PushSelectHdl(SelectHandler handler);
  void PopSelectHdl();

  /// The item whose key has been pressed, during Select; 0 at other times.
  unsigned short GetCurItemId() const { return current_; }

  /// Called when a key of this table has been pressed. The base calls the handlers, which may delete this object.
  /// \return non-zero if the key has been handled
  virtual long Select();

  /// Calls Select for the item of that key; false if there is none or the key has not been handled.
  bool Press(KeyCode code);

private:
  struct Item {
    unsigned short id;
    KeyCode code;
  };

  std::vector<Item> items_;
  std::vector<SelectHandler> handlers_;
  unsigned short current_ = 0;
  detail::Lifetime lifetime_;
};

} // namespace SV
