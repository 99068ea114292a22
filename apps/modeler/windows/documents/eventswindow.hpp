#pragma once
/// \file
/// The document window that lists events as they come: number, name and what each carries.

#include "background/eventlog.hpp"
#include "sv/virtualdevice.hpp"
#include "windows/documents/documentwindow.hpp"

namespace modeler {

class EventsWindow : public DocumentWindow {
public:
  /// \param log  outlives the window
  EventsWindow(SV::MDIFrame & frame, EventLog & log);
  ~EventsWindow() override;

  void Resize(SV::Size const & size) override;
  /// The list gets it.
  void GrabFocus() override;

private:
  void append(EventLog::Row const & row);
  void fitBar(SV::String const & text);

  EventLog & log_;
  HFONT font_;
  HWND list_;
  SV::VirtualDevice ruler_;
  long widest_ = 0; ///< of the rows
};

} // namespace modeler
