#pragma once
/// \file
/// Accelerator: keys that start something wherever the keyboard is.

#include "sv/export.hpp"
#include "sv/keycodes.hpp"
#include "sv/lifetime.hpp"
#include "tools/object.hpp"

#include <functional>
#include <vector>

namespace SV {

/// A table of keys. It takes effect by Application::InsertAccel, and its keys then come before anything that a window, a
/// dialog or a menu does with them. Main thread.
///
/// \code
///   accelerator.InsertItem(1, SV::KEY_CONTROL | SV::KEY_A + ('S' - 'A'));
///   accelerator.PushSelectHdl([this](SV::Accelerator *) { return Save() ? 1L : 0L; });
///   SV::Application::InsertAccel(&accelerator);
/// \endcode
class SV_API Accelerator : public LinkHdl {
public:
  /// Non-zero: the key has been dealt with.
  using SelectHandler = std::function<long(Accelerator *)>;

  Accelerator(); ///< without keys
  Accelerator(Accelerator const &) = delete;
  Accelerator & operator=(Accelerator const &) = delete;
  /// Takes it out of the application.
  ~Accelerator() override;

  /// \param code  the key with what has to be held along with it; nothing else may be held
  /// False for code 0, and for a key or an identifier that is there already.
  bool InsertItem(unsigned short id, KeyCode code);
  bool RemoveItem(unsigned short id); ///< false where there is none
  unsigned short GetItemCount() const;

  /// The handler that was pushed last is called first; one that gives 0 leaves the key to the one before. When all have,
  /// the key goes where it would have gone without this object. Popping where there is none does nothing.
  void PushSelectHdl(SelectHandler handler);
  void PopSelectHdl();

  /// The item whose key has been pressed, while Select runs; 0 at other times.
  unsigned short GetCurItemId() const { return current_; }

  /// Called when a key of this table has been pressed. The base calls the handlers, which may delete this object.
  /// Non-zero: the key has been dealt with.
  virtual long Select();

  /// Calls Select for the item of that key; false when there is none, or the key has not been dealt with.
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
