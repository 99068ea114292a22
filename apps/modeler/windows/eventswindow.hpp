#pragma once
/// \file
/// The document window that lists events as they come: number, name and what each carries.

#include "background/eventlog.hpp"
#include "sv/mdi.hpp"

namespace modeler {

class EventsWindow : public SV::MDIChild {
public:
  /// \param log  outlives the window
  EventsWindow(SV::MDIFrame & frame, EventLog & log);
  ~EventsWindow() override;

  void Resize(SV::Size const & size) override;
  /// The list gets it.
  void GrabFocus() override;

private:
  void append(EventLog::Row const & row);

  EventLog & log_;
  HFONT font_;
  HWND list_;
};

} // namespace modeler
