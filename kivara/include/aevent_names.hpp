#pragma once
/// \file
/// The catalogue of event types: the number and the name of every event of the product.
///
/// \code
///   KivEventType const type = Kiv_GetEventTypeOfName("SaveModel"); // KIV_EVENT_SaveModel, 708
///   for (unsigned long index = 1; index <= Kiv_GetEventCount() - 2; ++index)
///     std::puts(Kiv_GetEventNames()[index]);
/// \endcode
///
/// The tables never change, so any thread may call these functions. Look-ups by name are linear.

#include "export.hpp"

/// The types of all events of the product. 700 and 854 are sentinels; the events proper lie between them without a gap.
enum KivEventType : int {
  KIV_EVENT_FIRST = 700,
#define KIV_EVENT(name) KIV_EVENT_##name,
#include "detail/aevent_types.inc"
  KIV_EVENT_LAST
};
static_assert(KIV_EVENT_LAST == 854, "existing modules were built with these numbers");

/// The names; the index of a type's name is its number minus 700. The table must not be written to, although the pointer
/// would allow it.
KIV_API char const ** Kiv_GetEventNames();

/// How many names there are, both sentinels included: the events proper have the indices from 1 to this number less 2.
KIV_API unsigned long Kiv_GetEventCount();

/// The type of an event, by its exact, case-sensitive name. KIV_EVENT_LAST when no event has that name, and for the
/// sentinels' names and null.
KIV_API KivEventType Kiv_GetEventTypeOfName(char const * name);

/// The index of an event's name in the table, by the same rules; 0 when no event has that name.
KIV_API unsigned long Kiv_GetEventIndexOfName(char const * name);

/// Compares every pair of names, the sentinels' too, and reports an internal error for each pair that is equal.
KIV_API void Kiv_CheckEventNames();
