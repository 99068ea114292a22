#pragma once
/// \file
/// A pool of texts beside a model of them: what each text holds, and which of them share a block.

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace model {

inline constexpr int kTexts = 16;
inline constexpr int kNone = -1;
inline constexpr std::size_t kLongest = 600;
inline constexpr std::size_t kSteps = 1'000'000;

/// The end of the size class of a block; 0 for one beyond the classes.
inline std::size_t sizeClass(std::size_t bytes) {
  for (std::size_t end : {0x20, 0x40, 0x80, 0x100})
    if (bytes <= end)
      return end;
  return 0;
}

/// Texts by number, with the rules of sharing. It allocates nothing once it is made, so that guard pages are left to
/// the texts under test.
template <class Char> class Pool {
public:
  using Plain = std::basic_string<Char>;

  Pool() {
    blocks_.fill(kNone);
    for (Block & block : pool_)
      block.text.reserve(4 * kLongest);
    scratch_.reserve(4 * kLongest);
    joined_.reserve(4 * kLongest);
  }

  /// Which block a text has; kNone for the empty text.
  int block(int i) const { return blocks_[at(i)]; }
  std::uint32_t owners(int i) const { return pool_[at(block(i))].owners; }
  Plain const & text(int i) const { return block(i) == kNone ? empty_ : pool_[at(block(i))].text; }

  void share(int to, int from) {
    int const shared = block(from);
    if (shared != kNone)
      ++pool_[at(shared)].owners;
    replace(to, shared);
  }

  void swap(int i, int j) { std::swap(blocks_[at(i)], blocks_[at(j)]); }

  /// A block of its own, whatever the text had.
  void renew(int i, Plain const & text) {
    int fresh = kNone;
    if (!text.empty()) {
      for (fresh = 0; pool_[at(fresh)].owners != 0;)
        ++fresh;
      pool_[at(fresh)].owners = 1;
      pool_[at(fresh)].text.assign(text);
    }
    replace(i, fresh);
  }

  void assign(int i, Plain const & text) {
    if (block(i) != kNone && owners(i) == 1 && this->text(i).size() == text.size())
      pool_[at(block(i))].text.assign(text);
    else
      renew(i, text);
  }

  void append(int i, Plain const & added) {
    if (added.empty())
      return;
    Plain const & old = text(i);
    std::size_t const oldClass = sizeClass(old.size() * sizeof(Char) + 12);
    std::size_t const newClass = sizeClass((old.size() + added.size()) * sizeof(Char) + 12);
    if (!old.empty() && owners(i) == 1 && oldClass != 0 && oldClass == newClass)
      pool_[at(block(i))].text.append(added);
    else
      renew(i, joined_.assign(old).append(added));
  }

  void makeUnique(int i) {
    if (block(i) != kNone && owners(i) > 1)
      renew(i, joined_.assign(text(i)));
  }

  Plain & writable(int i) { return pool_[at(block(i))].text; }

  /// A copy of \p text to be changed or handed in; valid until the next call.
  Plain & scratch(Plain const & text) { return scratch_.assign(text); }

  /// A copy of what \p text has of \p count characters from \p start on.
  Plain & scratch(Plain const & text, std::size_t start, std::size_t count) {
    return scratch_.assign(text, start, count);
  }

private:
  struct Block {
    Plain text;
    std::uint32_t owners = 0;
  };

  static std::size_t at(int i) { return static_cast<std::size_t>(i); }

  void replace(int i, int newBlock) {
    if (block(i) != kNone)
      --pool_[at(block(i))].owners;
    blocks_[at(i)] = newBlock;
  }

  std::array<int, kTexts> blocks_;
  std::array<Block, kTexts + 2> pool_;
  Plain const empty_;
  Plain scratch_;
  Plain joined_;
};

/// Texts of type \p Text beside their model, and random material for operations on them.
template <class Text, class Char> class Walk {
public:
  using Plain = std::basic_string<Char>;

  explicit Walk(unsigned seed) : random_(seed) { material_.reserve(2 * kLongest); }

  /// One operation on texts \p i and \p j, on both sides.
  struct Operation {
    char const * name;
    void (*run)(Walk & walk, int i, int j);
  };

  /// Runs random operations; stops at the first difference.
  void run(std::vector<Operation> const & operations, void const * emptyBlock) {
    for (std::size_t step = 0, steps = support::times(kSteps); step < steps; ++step) {
      auto const & operation = operations[static_cast<std::size_t>(below(static_cast<int>(operations.size())))];
      int const i = below(kTexts);
      int const j = below(kTexts);
      auto const * const before = real[i].block();
      int const modelBefore = model.block(i);
      operation.run(*this, i, j);
      bool const isSame = (real[i].block() == before) == (model.block(i) == modelBefore) && agrees(i, emptyBlock) &&
                          agrees(j, emptyBlock);
      ASSERT_TRUE(isSame) << operation.name << ", step " << step;
      if (model.text(i).size() > kLongest)
        shorten(i);
    }
    for (int i = 0; i < kTexts; ++i)
      ASSERT_TRUE(agrees(i, emptyBlock));
  }

  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  Char character() {
    static constexpr char kCommon[] = "ab;;XY.\0";
    return below(8) == 0 ? static_cast<Char>(random_()) : static_cast<Char>(kCommon[below(sizeof kCommon - 1)]);
  }

  /// Mostly short, now and then across the size classes, with NUL characters. Valid until the next call.
  Plain const & material() {
    int const longest = below(8) == 0 ? 270 : 24;
    material_.resize(static_cast<std::size_t>(below(longest)));
    for (Char & each : material_)
      each = character();
    return material_;
  }

  /// A position or count, mostly sensible for a text.
  std::int32_t number(int i) {
    if (below(16) == 0)
      return static_cast<std::int32_t>(random_());
    return below(static_cast<int>(model.text(i).size()) + 4) - 1;
  }

  /// The text from \p start up to its next NUL. Valid until the model's next scratch.
  Plain const & upToNul(Plain const & text, std::size_t start) {
    return model.scratch(text, start, Plain::traits_type::length(text.c_str() + start));
  }

  /// What text \p i has of \p count characters from \p start on. Valid until the model's next scratch.
  Plain const & part(int i, std::int32_t start, std::int32_t count) {
    Plain const & text = model.text(i);
    bool const isSome = start >= 0 && start < lengthOf(text) && count > 0;
    return isSome ? model.scratch(text, static_cast<std::size_t>(start), static_cast<std::size_t>(count))
                  : model.scratch(text, 0, 0);
  }

  static std::int32_t lengthOf(Plain const & text) { return static_cast<std::int32_t>(text.size()); }

  std::array<Text, kTexts> real;
  Pool<Char> model;

private:
  bool agrees(int i, void const * emptyBlock) const {
    auto const & text = real[static_cast<std::size_t>(i)];
    auto const * const block = text.block();
    Plain const & expected = model.text(i);
    if (text.Len() != lengthOf(expected) || text.c_str()[text.Len()] != Char() ||
        Plain::traits_type::compare(text.c_str(), expected.data(), expected.size()) != 0)
      return false;
    if ((block == emptyBlock) != expected.empty())
      return false;
    if (block->nRefCount != (expected.empty() ? 0 : model.owners(i) - 1))
      return false;
    for (int k = 0; k < kTexts; ++k)
      if ((real[static_cast<std::size_t>(k)].block() == block) != (model.block(k) == model.block(i)))
        return false;
    return true;
  }

  void shorten(int i) {
    int const keep = below(60);
    Text & text = real[static_cast<std::size_t>(i)];
    text.Assign(text.c_str(), keep);
    model.assign(i, model.scratch(model.text(i), 0, static_cast<std::size_t>(keep)));
  }

  support::Random random_;
  Plain material_;
};

} // namespace model
