#include "drawing/textpieces.hpp"

#include <algorithm>
#include <climits>

namespace SV::detail {

namespace {

/// The system promises no more than 8,192.
constexpr int kLongest = 8000;

/// How many bytes the next piece has: never half a character.
int pieceLength(char const * text, int rest) {
  if (rest <= kLongest)
    return rest;
  int length = 0;
  while (length < kLongest)
    length += IsDBCSLeadByte(static_cast<BYTE>(text[length])) ? 2 : 1;
  return std::min(length, rest);
}

SIZE extentOf(HDC context, char const * text, int length) {
  SIZE size = {};
  GetTextExtentPoint32A(context, text, length, &size);
  return size;
}

LONG rightEdge(HDC context) {
  RECT visible = {};
  GetClipBox(context, &visible);
  return visible.right;
}

} // namespace

void drawPieces(HDC context, Point const & position, String const & text) {
  char const * next = text.c_str();
  int rest = text.Len();
  if (rest <= kLongest) {
    TextOutA(context, position.x, position.y, next, rest);
    return;
  }
  LONG const edge = rightEdge(context);
  long x = position.x;
  while (rest > 0 && x < edge) {
    int const length = pieceLength(next, rest);
    TextOutA(context, x, position.y, next, length);
    x += extentOf(context, next, length).cx;
    next += length;
    rest -= length;
  }
}

Size measurePieces(HDC context, String const & text) {
  // Not every system gives the empty text a height.
  if (text.Len() < 1) {
    TEXTMETRICA metrics = {};
    GetTextMetricsA(context, &metrics);
    return {0, metrics.tmHeight};
  }
  char const * next = text.c_str();
  int rest = text.Len();
  long long width = 0;
  long height = 0;
  do {
    int const length = pieceLength(next, rest);
    SIZE const size = extentOf(context, next, length);
    width += size.cx;
    height = size.cy;
    next += length;
    rest -= length;
  } while (rest > 0);
  return {static_cast<long>(std::min<long long>(width, LONG_MAX)), height};
}

} // namespace SV::detail
