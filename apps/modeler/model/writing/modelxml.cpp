#include "model/writing/modelxml.hpp"

#include "model/modeltime.hpp"

#include <fstream>

using SV::String;

namespace modeler {
namespace {

char const * elementOf(NodeKind kind) {
  switch (kind) {
  case NodeKind::Start: return "start";
  case NodeKind::Activity: return "activity";
  case NodeKind::Decision: return "decision";
  default: return "end";
  }
}

/// Control characters that XML does not allow are left out.
void writeAttribute(std::ostream & out, char const * name, String const & value) {
  out << ' ' << name << "=\"" << KivSGMLString::XMLStr(value, false).c_str() << '"';
}

void writeNode(std::ostream & out, Node const & node, Calendar const & calendar) {
  out << "  <" << elementOf(node.kind);
  writeAttribute(out, "id", node.id);
  writeAttribute(out, "text", node.text);
  if (node.duration != 0)
    writeAttribute(out, "duration", String(node.duration));
  else if (node.seconds > 0)
    writeAttribute(out, "time", timeText(calendar, node.seconds));
  out << "/>\n";
}

void writeFlow(std::ostream & out, Flow const & flow, ISequence<Node> const & nodes) {
  out << "  <flow";
  writeAttribute(out, "from", nodes[flow.from].id);
  writeAttribute(out, "to", nodes[flow.to].id);
  if (flow.text.Len() > 0)
    writeAttribute(out, "text", flow.text);
  out << "/>\n";
}

} // namespace

void writeXml(ProcessModel const & model, std::ostream & out) {
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<process";
  writeAttribute(out, "name", model.name);
  if (model.date)
    writeAttribute(out, "date", dateText(*model.date));
  if (model.calendar.isGiven()) {
    writeAttribute(out, "daysPerYear", numberText(model.calendar.daysPerYear));
    writeAttribute(out, "hoursPerDay", numberText(model.calendar.hoursPerDay));
  }
  out << ">\n";
  for (Node const & node : model.nodes)
    writeNode(out, node, model.calendar);
  for (Flow const & flow : model.flows)
    writeFlow(out, flow, model.nodes);
  out << "</process>\n";
}

bool writeXmlFile(String const & fileName, ProcessModel const & model) {
  std::ofstream file(fileName.c_str(), std::ios::binary);
  writeXml(model, file);
  file.close();
  return static_cast<bool>(file);
}

} // namespace modeler
