#pragma once
/// \file
/// The steps of a walk that String and WString have in common: each does the same to the text and to its model.

#include "text_model.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace model {

template <class Text, class Char> std::vector<typename Walk<Text, Char>::Operation> commonOperations() {
  using W = Walk<Text, Char>;
  using Plain = std::basic_string<Char>;
  return {
      {"copy", [](W & w, int i, int j) { w.real[i] = w.real[j], w.model.share(i, j); }},
      {"copy through a new one",
       [](W & w, int i, int j) {
         Text copy(w.real[j]);
         w.real[i] = std::move(copy);
         w.model.share(i, j);
       }},
      {"swap",
       [](W & w, int i, int j) {
         w.real[i].swap(w.real[j]);
         w.model.swap(i, j);
       }},
      {"assign by length",
       [](W & w, int i, int) {
         Plain const & text = w.material();
         w.real[i].Assign(text.data(), W::lengthOf(text));
         w.model.assign(i, text);
       }},
      {"assign to the NUL",
       [](W & w, int i, int) {
         Plain const & text = w.material();
         w.real[i] = text.c_str();
         w.model.assign(i, w.upToNul(text, 0));
       }},
      {"assign the same length",
       [](W & w, int i, int) {
         Plain & text = w.model.scratch(w.model.text(i));
         for (Char & each : text)
           each = w.character();
         w.real[i].Assign(text.data(), W::lengthOf(text));
         w.model.assign(i, text);
       }},
      {"assign a part of itself",
       [](W & w, int i, int) {
         std::int32_t const start = w.below(w.real[i].Len() + 1);
         std::int32_t const count = w.below(w.real[i].Len() - start + 1);
         w.real[i].Assign(w.real[i].c_str() + start, count);
         w.model.assign(i, w.part(i, start, count));
       }},
      {"append a text",
       [](W & w, int i, int) {
         Plain const & text = w.material();
         w.real[i] += text.c_str();
         w.model.append(i, w.upToNul(text, 0));
       }},
      {"append a character",
       [](W & w, int i, int) {
         Char const c = w.character();
         w.real[i] += c;
         w.model.append(i, w.model.scratch(Plain(c != Char() ? 1 : 0, c)));
       }},
      {"append another or itself",
       [](W & w, int i, int j) {
         w.real[i] += w.real[j];
         if (w.model.block(i) == kNone)
           w.model.share(i, j);
         else
           w.model.append(i, w.model.scratch(w.model.text(j)));
       }},
      {"append itself",
       [](W & w, int i, int) {
         w.real[i] += w.real[i];
         w.model.append(i, w.model.scratch(w.model.text(i)));
       }},
      {"append the end of itself",
       [](W & w, int i, int) {
         std::int32_t const start = w.below(w.real[i].Len() + 1);
         w.real[i] += w.real[i].c_str() + start;
         w.model.append(i, w.upToNul(w.model.text(i), static_cast<std::size_t>(start)));
       }},
      {"substring",
       [](W & w, int i, int j) {
         std::int32_t const start = w.number(j);
         std::int32_t const count = w.number(j);
         w.real[i] = w.real[j].substr(start, count);
         Plain const & expected = w.part(j, start, count);
         if (expected.size() == w.model.text(j).size())
           w.model.share(i, j);
         else
           w.model.renew(i, expected);
       }},
      {"character",
       [](W & w, int i, int) {
         std::int32_t const position = w.number(i);
         bool const isInside = position >= 0 && position < w.real[i].Len();
         ASSERT_EQ(w.real[i].charAt(position), isInside ? w.model.text(i)[static_cast<std::size_t>(position)] : Char());
       }},
      {"write in place",
       [](W & w, int i, int) {
         w.real[i].makeUnique();
         w.model.makeUnique(i);
         if (w.real[i].Len() == 0)
           return;
         std::int32_t const position = w.below(w.real[i].Len());
         w.real[i].writable()[position] = w.model.writable(i)[static_cast<std::size_t>(position)] = w.character();
       }},
      {"compare", [](W & w, int i, int j) { ASSERT_EQ(w.real[i] == w.real[j], w.model.text(i) == w.model.text(j)); }},
      {"clear",
       [](W & w, int i, int) {
         w.real[i] = Text();
         w.model.renew(i, Plain());
       }},
  };
}

} // namespace model
