#pragma once
/// \file
/// The words of process models, by their identifiers in kivml.dll.

namespace modeler {

enum Word : unsigned short {
  WORD_ACTIVITY = 1001,
  WORD_DECISION = 1002,
  WORD_START = 1003,
  WORD_END = 1004,
  WORD_DURATION = 1005,
  WORD_PROCESS = 1006,
  WORD_FLOW = 1007,
  WORD_CALENDAR = 1008,
  WORD_DATE = 1009
};

} // namespace modeler
