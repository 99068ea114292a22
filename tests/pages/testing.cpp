#include "support/data/random.hpp"
#include "support/memory/allocation.hpp"

#include <string>

std::string randomText(support::Random & random);
void decode(std::string const & text);

void damaged() {
  //[[1]]
}
