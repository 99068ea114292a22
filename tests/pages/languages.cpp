#include "kivara.hpp"

#include "sv/resource.hpp"

using SV::String;

class Product : public KivMDIApplication {
  int prepareApplication() override {
    //[[1]]
    return 0;
  }
};

void aText() {
  //[[2]]
}

constexpr int WORD_DECISION = 1001;
void addDecision(String const & words);

void aWord(String const & line) {
  //[[3]]
}
