#pragma once
/// \file
/// A small process model and its text form.
///
///     process "Handling of an order"
///     start    received  "Order received"
///     activity check     "Check the order"  duration 20
///     decision complete  "Complete?"
///     end      done      "Done"
///     flow received check
///     flow complete done "yes"
///     # a comment, to the end of the line
///
/// The words may be those of any installed language. Identifiers are words. A text stands in quotation marks on one line, with a
/// backslash before a quotation mark that belongs to it. A duration is in minutes.

#include "kivara.hpp"

namespace modeler {

enum class NodeKind { Start, Activity, Decision, End };

inline constexpr long kLongestDuration = 999'999'999; ///< in minutes

struct Node {
  NodeKind kind;
  SV::String id;
  SV::String text;
  long duration; ///< in minutes; 0 if the file gives none
};

/// An arrow between two nodes, by their places in the model.
struct Flow {
  std::size_t from;
  std::size_t to;
  SV::String text;
};

struct ProcessModel {
  SV::String name;
  ISequence<Node> nodes;
  ISequence<Flow> flows;
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
  LineLost      ///< the last line, which the reader has left out for want of a line end
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

/// The sum of all durations, in minutes.
long long totalDuration(ProcessModel const & model);

} // namespace modeler
