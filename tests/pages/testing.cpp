#include "support/allocation.hpp"
#include "support/random.hpp"

#include <string>

std::string randomText(support::Random & random);
void decode(std::string const & text);

void damaged() {
  //[[1]]
}
