#pragma once
/// \file
/// Dates and durations of a process model: what its file may hold, and what is shown.
///
/// A bare number of minutes is shown as such. With a calendar, or a duration in quotation marks, the model's times are shown
/// as `Y:DDD:HH:MM:SS` in its calendar.

#include "processmodel.hpp"

namespace modeler {

/// \name What a file holds
/// Each changes its last argument only when the result is ModelFault::None.
/// @{
ModelFault readCalendar(SV::String const & days, SV::String const & hours, Calendar & calendar);
/// \param text  Y:DDD:HH:MM:SS, with at most nine digits for the years
ModelFault readTime(SV::String const & text, Calendar const & calendar, double & seconds);
/// \param text  YYYY:MM:DD
ModelFault readDate(SV::String const & text, std::optional<SV::Date> & date);
/// @}

/// \name What a file is to hold
/// The forms that the operations above read.
/// @{
SV::String timeText(Calendar const & calendar, double seconds);
SV::String dateText(SV::Date const & date);
/// Days per year or hours per day.
SV::String numberText(double number);
/// @}

/// How long a node takes, in seconds.
double secondsOf(Node const & node);

/// How long all of those nodes take, in the model's calendar.
KivCoreTime sumOf(ProcessModel const & model, ISequence<std::size_t> const & nodes);
KivCoreTime sumOfAll(ProcessModel const & model);

/// Whether its durations are minutes only.
bool isInMinutes(ProcessModel const & model);

/// How a duration is shown. \param minutes  the word for minutes
SV::String durationText(ProcessModel const & model, KivCoreTime time, SV::String const & minutes);

} // namespace modeler
