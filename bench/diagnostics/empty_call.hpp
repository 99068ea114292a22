#pragma once
/// \file
/// The least that a call into a DLL can cost.

#ifdef BENCH_EMPTY_CALL_EXPORTS
#define BENCH_API __declspec(dllexport)
#else
#define BENCH_API __declspec(dllimport)
#endif

/// Does nothing.
BENCH_API void emptyCall();
