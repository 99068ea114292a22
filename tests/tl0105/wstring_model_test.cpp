// Long random sequences of operations on WString, compared with std::wstring.

#include "text_operations.hpp"

#include "support/memory/allocation.hpp"
#include "tools/wstring.hpp"

#include <utility>

namespace {

void walk() {
  model::Walk<SV::WString, wchar_t> walk(2);
  walk.run(model::commonOperations<SV::WString, wchar_t>(), SV::GetEmptyStrDataW());
}

} // namespace

TEST(WStringModel, AMillionOperationsAgreeWithTheModel) { walk(); }

TEST(WStringModel, AMillionOperationsAgreeWithTheModelUnderGuardPages) {
  support::GuardPages const guard;
  walk();
}
