#pragma once
/// \file
/// event_holder.dll: ends what it was given when it is detached. It knows nothing of the library and is loaded before it, so
/// that this comes after the library's own end.

/// At most 8 objects; they end in the order in which they were given.
extern "C" __declspec(dllimport) void hold(void * object, void (*end)(void *));
