#pragma once
/// \file
/// A small process model and its text form.
///
///     process "Handling of an order"
///     date     "2024:03:05"
///     calendar 220 8
///     start    received  "Order received"
///     activity check     "Check the order"  duration 20
///     activity produce   "Produce"  duration "00:001:02:30:00"
///     decision complete  "Complete?"
///     end      done      "Done"
///     flow received check
///     flow complete done "yes"
///     # a comment, to the end of the line
///
/// The words may be those of any installed language. Identifiers are words. A text stands in quotation marks on one line, with a
/// backslash before a quotation mark that belongs to it. A duration is a number of minutes, or a
/// text in quotation marks as a KivCoreTime reads it in the calendar: days per year, hours per day.

#include "kivara.hpp"

#include <optional>

namespace modeler {

enum class NodeKind { Start, Activity, Decision, End };

inline constexpr long kLongestDuration = 999'999'999; ///< in minutes

struct Node {
  NodeKind kind;
  SV::String id;
  SV::String text;
  long duration;      ///< in minutes; 0 if the file gives none
  double seconds = 0; ///< of a duration in quotation marks
};

/// An arrow between two nodes, by their places in the model.
struct Flow {
  std::size_t from;
  std::size_t to;
  SV::String text;
};

/// Of working time; zeros stand for the usual one.
struct Calendar {
  double daysPerYear = 0;
  double hoursPerDay = 0;

  bool isGiven() const { return daysPerYear > 0; }
};

struct ProcessModel {
  SV::String name;
  ISequence<Node> nodes;
  ISequence<Flow> flows;
  Calendar calendar = {};
  std::optional<SV::Date> date = {};
};

enum class ModelFault {
  None,
  NotReadable,  ///< the file as a whole
  NoStatement,  ///< a word that begins none
  NoIdentifier, ///< one is missing
  NoText,       ///< a text in quotation marks is missing
  NoDuration,   ///< a number of minutes is missing
  Twice,        ///< an identifier that another node has
  Unknown,      ///< an identifier that no node above has
  TextOpen,     ///< the second quotation mark is missing on the line of the first
  TooLong,      ///< a duration above kLongestDuration
  NulByte,      ///< one in the line: it ends there for the parser
  LineTooLong,  ///< a line beyond the limit of the reader
  LineLost,     ///< the last line, which the reader has left out for want of a line end
  NoCalendar,   ///< days per year or hours per day are missing, or out of range
  LateCalendar, ///< a calendar below a node
  NoTime,       ///< a duration in quotation marks that is none
  TooManyYears, ///< one whose years have more than nine digits
  NoDate
};

/// What is wrong with a file.
struct ModelReport {
  ModelFault fault = ModelFault::None;
  std::int64_t line = 0; ///< counted from 1; 0 when the file cannot be read
  SV::String word;       ///< the word that is wrong, as far as there is one
};

/// Reads a model.
/// \param report  what is wrong; the model then holds what precedes it
/// \return false for a file that cannot be read or has a fault
bool readProcessModel(SV::String const & fileName, ProcessModel & model, ModelReport & report);

} // namespace modeler
