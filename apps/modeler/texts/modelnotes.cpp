#include "texts/modelnotes.hpp"

#include "model/analysis/paths.hpp"
#include "model/modeltime.hpp"
#include "texts/texts.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr std::size_t kMostPaths = 5;

String shown(ProcessModel const & model, KivCoreTime const & time) {
  return durationText(model, time, text(Text::Minutes));
}

void addPaths(ProcessModel const & model, ISequence<String> & notes) {
  Paths const found = pathsOf(model, kMostPaths);
  for (Path const & path : found.paths)
    notes.push_back(pathText(model, path) + ": " + shown(model, sumOf(model, path)));
  if (!found.areAll)
    notes.push_back(text(Text::MorePaths));
}

} // namespace

String durationText(ProcessModel const & model, Node const & node) {
  double const seconds = secondsOf(node);
  if (!(seconds > 0))
    return String();
  KivCoreTime const time(seconds, model.calendar.daysPerYear, model.calendar.hoursPerDay);
  return shown(model, time);
}

String headlineOf(ProcessModel const & model) { return model.name + ": " + shown(model, sumOfAll(model)); }

ISequence<String> notesOf(ProcessModel const & model) {
  ISequence<String> notes;
  if (model.date)
    notes.push_back(KivDate::GetFormatedDate(*model.date, text(Text::DateFormat)));
  addPaths(model, notes);
  return notes;
}

} // namespace modeler
