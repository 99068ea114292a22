#include "texts/modelreport.hpp"

#include "model/excerpt.hpp"
#include "texts/texts.hpp"

using SV::String;

namespace modeler {
namespace {

struct Row {
  ModelFault fault;
  Text text;
};
constexpr Row kRows[] = {{ModelFault::NotReadable, Text::NotReadable},
                         {ModelFault::NoStatement, Text::NoStatement},
                         {ModelFault::NoIdentifier, Text::NoIdentifier},
                         {ModelFault::NoText, Text::NoText},
                         {ModelFault::NoDuration, Text::NoDuration},
                         {ModelFault::Twice, Text::Twice},
                         {ModelFault::Unknown, Text::Unknown},
                         {ModelFault::TextOpen, Text::TextOpen},
                         {ModelFault::TooLong, Text::TooLong},
                         {ModelFault::NulByte, Text::NulByte},
                         {ModelFault::LineTooLong, Text::LineTooLong},
                         {ModelFault::LineLost, Text::LineLost},
                         {ModelFault::NoCalendar, Text::NoCalendar},
                         {ModelFault::LateCalendar, Text::LateCalendar},
                         {ModelFault::NoTime, Text::NoTime},
                         {ModelFault::TooManyYears, Text::TooManyYears},
                         {ModelFault::NoDate, Text::NoDate}};

} // namespace

String reportText(ModelReport const & report) {
  for (Row const & row : kRows)
    if (row.fault == report.fault) {
      String const reason = filled(row.text, excerptOfWord(report.word));
      return report.line > 0 ? filled(Text::InLine, String(report.line), reason) : reason;
    }
  return String();
}

} // namespace modeler
