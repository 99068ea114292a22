#include "frame/console.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Row {
  unsigned long event;
  char const * text;
  bool ends;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.event; }

class ControlEvent : public testing::TestWithParam<Row> {};
TEST_P(ControlEvent, HasItsLineAndItsEnd) {
  kivara::ControlAnswer const answer = kivara::controlAnswer(GetParam().event);
  EXPECT_STREQ(answer.text, GetParam().text);
  EXPECT_EQ(answer.ends, GetParam().ends);
}
INSTANTIATE_TEST_SUITE_P(Events, ControlEvent,
                         testing::Values(Row{0, "[exception] Ctrl+C was pressed\n", false},
                                         Row{1, "[exception] Crtl+Break was pressed\n", false},
                                         Row{2, "[exception] Close Event received\n", false}, Row{3, nullptr, true},
                                         Row{4, nullptr, true}, Row{5, "[exception] LogOff Event received\n", true},
                                         Row{6, "[exception] ShutDown Event received\n", true}, Row{7, nullptr, true},
                                         Row{0xFFFFFFFF, nullptr, true}));

} // namespace
