#pragma once
/// \file
/// The dialog that sends a request to a URL and shows what became of it.

#include "background/webrequest.hpp"

#include "sv/button.hpp"
#include "sv/dialog.hpp"
#include "sv/edit.hpp"
#include "sv/fixed.hpp"
#include "sv/timer.hpp"

#include <functional>

namespace modeler {

/// The program goes on while it waits, and it can be closed meanwhile: the answer is then dropped. So it is after a minute, since
/// a server that sends a byte now and then would be waited for without end.
class RequestDialog : public SV::ModalDialog {
public:
  static constexpr unsigned kPatience = 60; ///< seconds

  /// \param url       what stands in the field at first
  /// \param answered  called with the URL and the first line of what became of the request
  RequestDialog(SV::Window * parent, SV::String const & url,
                std::function<void(SV::String const & url, SV::String const & outcome)> answered,
                unsigned patience = kPatience);

  SV::String GetUrl() const { return url_.GetText(); }

private:
  void place();
  void send();
  void tick();
  void end(SV::String const & text);

  std::function<void(SV::String const &, SV::String const &)> answered_;
  unsigned patience_;
  WebRequest request_;
  unsigned long long started_ = 0; ///< as GetTickCount64 counts
  SV::String requested_;
  SV::Timer timer_;

  // Tab goes through the controls in this order, and a label leads to the field after it.
  SV::FixedText urlLabel_{this};
  SV::Edit url_{this};
  SV::PushButton send_{this, SV::WB_DEFAULT_BUTTON};
  SV::FixedText answerLabel_{this};
  SV::Edit answer_{this, SV::WB_BORDER | SV::WB_MULTILINE | SV::WB_READONLY};
  SV::CancelButton close_{this};
};

} // namespace modeler
