#include "model/writing/modelwriter.hpp"

#include "model/modeltime.hpp"
#include "model/words.hpp"

#include <fstream>

using SV::String;

namespace modeler {
namespace {

String word(Word id) { return Kiv_MultiLangGet(id, KivInternational::GetCurrentLanguageID()); }

String quoted(String const & text) { return "\"" + Kiv_Mask(text.c_str(), '"', '\\') + "\""; }

Word wordOf(NodeKind kind) {
  switch (kind) {
  case NodeKind::Start: return WORD_START;
  case NodeKind::Activity: return WORD_ACTIVITY;
  case NodeKind::Decision: return WORD_DECISION;
  default: return WORD_END;
  }
}

String lineOf(Calendar const & calendar) {
  return word(WORD_CALENDAR) + " " + numberText(calendar.daysPerYear) + " " + numberText(calendar.hoursPerDay);
}

String lineOf(SV::Date const & date) { return word(WORD_DATE) + " " + quoted(dateText(date)); }

String lineOf(ProcessModel const & model, Node const & node) {
  String line = word(wordOf(node.kind)) + " " + node.id + " " + quoted(node.text);
  if (node.duration > 0)
    line += " " + word(WORD_DURATION) + " " + String(node.duration);
  else if (node.seconds > 0)
    line += " " + word(WORD_DURATION) + " " + quoted(timeText(model.calendar, node.seconds));
  return line;
}

String lineOf(ProcessModel const & model, Flow const & flow) {
  String line = word(WORD_FLOW) + " " + model.nodes[flow.from].id + " " + model.nodes[flow.to].id;
  if (flow.text.Len() > 0)
    line += " " + quoted(flow.text);
  return line;
}

} // namespace

bool writeProcessModel(String const & fileName, ProcessModel const & model) {
  std::ofstream file(fileName.c_str());
  file << (word(WORD_PROCESS) + " " + quoted(model.name)).c_str() << '\n';
  if (model.date)
    file << lineOf(*model.date).c_str() << '\n';
  if (model.calendar.isGiven())
    file << lineOf(model.calendar).c_str() << '\n';
  for (Node const & node : model.nodes)
    file << lineOf(model, node).c_str() << '\n';
  for (Flow const & flow : model.flows)
    file << lineOf(model, flow).c_str() << '\n';
  file.close();
  return static_cast<bool>(file);
}

} // namespace modeler
