#pragma once
/// \file
/// The dynamic console: a console window of a program that has none, for a debug run.

namespace kivara {

/// How the program answers a control event of its console.
struct ControlAnswer {
  char const * text; ///< printed first; null prints nothing
  bool ends;         ///< the program ends with exit code 1; otherwise it runs on
};

/// \param event  the system's number: 0 Ctrl+C, 1 Ctrl+Break, 2 close, 5 log-off, 6 shut-down
ControlAnswer controlAnswer(unsigned long event);

/// Opens the console, points the runtime's three streams to it and answers its control events from then on; it is
/// closed when the process exits. When the system gives no console, the process ends with a fatal message.
void openDynamicConsole();

} // namespace kivara
