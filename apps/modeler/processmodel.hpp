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
/// The words may be those of any installed language. Identifiers are words, texts stand in quotation marks, with a backslash
/// in front of one that belongs to the text. A duration is in minutes.

#include "kivara.hpp"

namespace modeler {

enum class NodeKind { Start, Activity, Decision, End };

struct Node {
  NodeKind kind;
  SV::String id;
  SV::String text;
  long duration; ///< in minutes; 0 where none is told
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

/// Reads a model.
/// \param fault  what is wrong, with the number of the line; the model then holds what precedes it
/// \return false for a file that cannot be read or has a fault
bool readProcessModel(SV::String const & fileName, ProcessModel & model, SV::String & fault);

/// The sum of all durations, in minutes.
long totalDuration(ProcessModel const & model);

} // namespace modeler
