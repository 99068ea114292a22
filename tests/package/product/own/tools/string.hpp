#pragma once

/// The product's own header of that name.
inline char const * ownString() { return "own"; }
