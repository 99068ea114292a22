// platform_facts QUESTION...: prints what the library says of the platform, a line "question=answer" for each word, and
// in the end the internal errors that it reported.

#include "acmdline.hpp"
#include "aplatfrm.hpp"

#include "diagnostics/internal_errors.hpp"

#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

struct Question {
  char const * name;
  bool (*ask)();
};

constexpr Question kQuestions[] = {{"xp", Kiv_IsAtLeastWindowsXP},   {"vista", Kiv_IsAtLeastWindowsVista},
                                   {"7", Kiv_IsAtLeastWindows7},     {"db2", Kiv_IsDBDB2},
                                   {"informix", Kiv_IsDBInformix},   {"oracle", Kiv_IsDBOracle},
                                   {"sqlserver", Kiv_IsDBSQLServer}, {"mdac", Kiv_IsValidMDACVersion}};

} // namespace

int main(int argc, char ** argv) {
  KivCmdline::init(argc, argv, true, "log_facts");
  kivtest::InternalErrors const errors;
  for (int i = 1; i < argc; ++i)
    for (Question const & question : kQuestions)
      if (std::strcmp(argv[i], question.name) == 0)
        std::printf("%s=%d\n", question.name, question.ask());
  for (std::string const & place : errors.places())
    std::printf("error %s\n", place.c_str());
}
