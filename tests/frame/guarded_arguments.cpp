#include "frame/guarded_arguments.hpp"

#include "tools/winapi.hpp"

#include <cstring>
#include <new>
#include <utility>

namespace kivtest {
namespace {

constexpr std::size_t kPage = 4096;

void ensure(GuardedBlock & block, std::size_t bytes) {
  if (block.capacity() < bytes)
    block = GuardedBlock(bytes);
}

} // namespace

GuardedBlock::GuardedBlock(std::size_t bytes) : capacity_((bytes + kPage - 1) / kPage * kPage) {
  start_ = static_cast<char *>(VirtualAlloc(nullptr, capacity_ + kPage, MEM_RESERVE, PAGE_NOACCESS));
  if (start_ == nullptr || VirtualAlloc(start_, capacity_, MEM_COMMIT, PAGE_READWRITE) == nullptr)
    throw std::bad_alloc();
}

GuardedBlock::GuardedBlock(GuardedBlock && other) noexcept
    : start_(std::exchange(other.start_, nullptr)), capacity_(std::exchange(other.capacity_, 0)) {}

GuardedBlock & GuardedBlock::operator=(GuardedBlock && other) noexcept {
  std::swap(start_, other.start_);
  std::swap(capacity_, other.capacity_);
  return *this;
}

GuardedBlock::~GuardedBlock() {
  if (start_ != nullptr)
    VirtualFree(start_, 0, MEM_RELEASE);
}

void GuardedArguments::set(std::vector<std::string> const & words) {
  ensure(array_, words.size() * sizeof(char *));
  argc_ = static_cast<int>(words.size());
  argv_ = reinterpret_cast<char **>(array_.last(words.size() * sizeof(char *)));
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::size_t const bytes = words[i].size() + 1;
    if (i == words_.size())
      words_.emplace_back(bytes);
    ensure(words_[i], bytes);
    argv_[i] = words_[i].last(bytes);
    std::memcpy(argv_[i], words[i].c_str(), bytes);
  }
}

} // namespace kivtest
