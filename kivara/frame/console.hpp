#pragma once
/// \file
/// The dynamic console: a console window for debug runs of a program that has none.

namespace kivara {

/// How the program reacts to a control event of its console.
struct ControlAnswer {
  char const * text; ///< printed first; nothing if null
  bool ends;         ///< the program ends with exit code 1; otherwise it runs on
};

/// \param event  the system's number: 0 Ctrl+C, 1 Ctrl+Break, 2 close, 5 log-off, 6 shut-down
ControlAnswer controlAnswer(unsigned long event);

/// Opens the console, connects the runtime's three streams to it and handles its control events from then on. It is closed when
/// the process exits. If the system provides no console, the process ends with a message that no option suppresses.
void openDynamicConsole();

} // namespace kivara
