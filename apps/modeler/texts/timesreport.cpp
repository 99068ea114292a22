#include "texts/timesreport.hpp"

#include "model/analysis/pathtimes.hpp"
#include "model/modeltime.hpp"
#include "texts/analysistexts.hpp"
#include "texts/traytexts.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr std::size_t kMostPaths = 500;

using Row = ISequence<String>;

String calendarText(ProcessModel const & model) {
  Calendar const calendar = calendarOf(model);
  return filled(kCalendarOf, numberText(calendar.daysPerYear), numberText(calendar.hoursPerDay));
}

Row rowOf(ProcessModel const & model, String const & name, PathTime const & path) {
  return {name, pathTimeText(path.time), pathText(model, path.path)};
}

/// What limits the rows below.
void addRemarks(PathTimes const & times, ISequence<Row> & rows) {
  if (times.activitiesWithoutTime > 0)
    rows.push_back({filled(kActivitiesWithoutTime, String(static_cast<int>(times.activitiesWithoutTime)))});
  if (!times.areAll)
    rows.push_back({text(kNotAllPaths)});
}

void addTimes(ProcessModel const & model, PathTimes const & times, ISequence<Row> & rows) {
  rows.push_back(rowOf(model, text(kShortest), times.paths[times.shortest]));
  rows.push_back(rowOf(model, text(kLongest), times.paths[times.longest]));
  addRemarks(times, rows);
  rows.push_back({});
  int number = 0;
  for (PathTime const & path : times.paths)
    rows.push_back(rowOf(model, filled(kPathOf, String(++number)), path));
}

} // namespace

ISequence<Row> timesReport(ProcessModel const & model) {
  PathTimes const times = timesOf(model, kMostPaths);
  ISequence<Row> rows = {{text(kProcess), model.name}, {text(kCalendar), calendarText(model)}, {}};
  if (times.paths.empty())
    rows.push_back({text(times.areAll ? kNoPath : kNotAllPaths)});
  else if (!times.hasTimes)
    rows.push_back({text(kNoTimes)});
  else
    addTimes(model, times, rows);
  return rows;
}

String pathTimeText(KivCoreTime time) { return time.overFlow() ? text(kTimeTooLong) : time.asString(); }

} // namespace modeler
