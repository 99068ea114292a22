#include "kivara.hpp"

#include <cstdio>
#include <cstring>

using SV::String;

//[[1]]

bool save(String const & model) {
  //[[2]]
}

//[[3]]

//[[4]]

class Cache {
public:
  ~Cache() = default;
};

void atTheEnd(SV::String const & temporaryName, Cache * cache) {
  //[[5]]
}
