#include "atools.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Row {
  char const * name;
  bool valid;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << (row.name != nullptr ? row.name : "(null)");
}

class ValidFilename : public testing::TestWithParam<Row> {};
TEST_P(ValidFilename, IsToldFromItsTextAlone) { EXPECT_EQ(Kiv_Valid_Filename(GetParam().name), GetParam().valid); }

INSTANTIATE_TEST_SUITE_P(Plain, ValidFilename,
                         testing::Values(Row{nullptr, false}, Row{"", false}, Row{"C:\\dir\\file.txt", true},
                                         Row{"file", true}, Row{"dir/file", true}, Row{"..\\file", true},
                                         Row{"\\file", true}, Row{"a b", true}, Row{"\xE4\xF6", true},
                                         Row{"C:\\dir\\", false}, Row{"dir/", false}, Row{"\\", false},
                                         Row{"C:", false}, Row{"a//b", false}, Row{"a\\/b", false}, Row{"a/\\b", false},
                                         Row{"//a", false}, Row{"ab://x", false}, Row{"http://x/y", false}));

INSTANTIATE_TEST_SUITE_P(Colon, ValidFilename,
                         testing::Values(Row{"c:file", true}, Row{"Z:/f", true}, Row{"ab:c", false}, Row{":a", false},
                                         Row{"1:a", false}, Row{"C:a:b", false}, Row{"dir\\a:b", false},
                                         Row{"C::a", false}));

INSTANTIATE_TEST_SUITE_P(Characters, ValidFilename,
                         testing::Values(Row{"a|b", false}, Row{"a*", false}, Row{"<a", false}, Row{"a>b", false},
                                         Row{"a?b", false}, Row{"a\"b", false}, Row{"C:\\di?r\\file", false}));

INSTANTIATE_TEST_SUITE_P(Device, ValidFilename,
                         testing::Values(Row{"CON", false}, Row{"con.txt", false}, Row{"PRN", false},
                                         Row{"AUX.", false}, Row{"clock$", false}, Row{"NUL", false},
                                         Row{"COM1", false}, Row{"COM2", false}, Row{"COM3", false}, Row{"COM4", false},
                                         Row{"COM5", false}, Row{"COM6", false}, Row{"COM7", false}, Row{"COM8", false},
                                         Row{"com9.x", false}, Row{"LPT1", false}, Row{"LPT2", false},
                                         Row{"LPT3", false}, Row{"LPT4", false}, Row{"LPT5", false}, Row{"LPT6", false},
                                         Row{"LPT7", false}, Row{"LPT8", false}, Row{"lpt9", false}, Row{"COM1x", true},
                                         Row{"CON1", true}, Row{"COM0", true}, Row{"CLOCK", true}, Row{"xCON", true},
                                         Row{"C:\\CON", true}, Row{"dir\\con.txt", true}, Row{"CON\\file", true}));

INSTANTIATE_TEST_SUITE_P(Server, ValidFilename,
                         testing::Values(Row{"\\\\server\\share\\file", true}, Row{"\\\\server\\share/file", true},
                                         Row{"\\\\s\\s\\f", true}, Row{"\\\\", false}, Row{"\\\\server", false},
                                         Row{"\\\\server\\", false}, Row{"\\\\server\\share", false},
                                         Row{"\\\\server\\share\\", false}, Row{"\\\\\\share\\file", false},
                                         Row{"\\\\server\\\\file", false}, Row{"\\\\ser\tver\\share\\file", false},
                                         Row{"\\\\s\xE4\\share\\file", true}, Row{"\\\\server\\share\\C:file", false},
                                         Row{"\\\\server\\share\\CON", false}, Row{"\\\\s*r/v:r\\sh?re\\file", true},
                                         Row{"\\\\CON\\NUL\\file", true}, Row{"\\\\server\\share\\con.txt", false},
                                         Row{"\\\\server\\share\\\\file", true}, Row{"\\\\s\x1F\\share\\file", false},
                                         Row{"\\\\s r\\share\\file", true}, Row{"\\\\server\\share\\a//b", false},
                                         Row{"\\\\server\\share\\a*b", false}));

} // namespace
