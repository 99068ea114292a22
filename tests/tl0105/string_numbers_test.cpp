// What converts between texts and numbers, and what the compiler refuses.

#include "tools/string.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>

using SV::String;

namespace {

template <class... Types> struct List {};

using Converting = List<char, short, unsigned short, int, unsigned int, long, unsigned long>;
using OnlyWhenAskedFor = List<long long, unsigned long long>;
using WithoutAText =
    List<bool, signed char, unsigned char, wchar_t, char8_t, char16_t, char32_t, float, double, long double>;

enum Plain { kSeven = 7 };
enum class Scoped { One };
using Numbers = List<bool, char, unsigned char, wchar_t, short, int, unsigned int, long, unsigned long, long long,
                     unsigned long long, float, double, long double, Plain, Scoped>;

template <class... Types, class Check> void each(List<Types...>, Check const & check) {
  (check(static_cast<Types *>(nullptr)), ...);
}

template <class A, class B>
concept Adds = requires(A a, B b) {
  a + b;
};
template <class A, class B>
concept Subtracts = requires(A a, B b) {
  a - b;
};
template <class A, class B>
concept Multiplies = requires(A a, B b) {
  a * b;
};
template <class A, class B>
concept Divides = requires(A a, B b) {
  a / b;
};
template <class A, class B>
concept Remains = requires(A a, B b) {
  a % b;
};
template <class A, class B>
concept Shifts = requires(A a, B b) {
  a << b;
};
template <class A, class B>
concept Equals = requires(A a, B b) {
  a == b;
};
template <class A, class B>
concept Differs = requires(A a, B b) {
  a != b;
};
template <class A, class B>
concept Precedes = requires(A a, B b) {
  a < b;
};
template <class A, class B>
concept Exceeds = requires(A a, B b) {
  a > b;
};
template <class A, class B>
concept PrecedesOrEquals = requires(A a, B b) {
  a <= b;
};
template <class A, class B>
concept ExceedsOrEquals = requires(A a, B b) {
  a >= b;
};
template <class A, class B>
concept Compares = requires(A a, B b) {
  a <=> b;
};
template <class A, class B>
concept Appends = requires(A a, B b) {
  a += b;
};
template <class A, class B>
concept Assigns = requires(A a, B b) {
  a = b;
};
template <class A, class B>
concept Chooses = requires(bool first, A a, B b) {
  first ? a : b;
};
template <class A, class B>
concept Indexes = requires(A a, B b) {
  a[b];
};
template <class T>
concept Condition = requires(T a) {
  a ? 1 : 0;
};
template <class T>
concept Negates = requires(T a) {
  !a;
};
template <class T>
concept Joins = requires(T a) {
  a && true;
};
template <class T>
concept Minus = requires(T a) {
  -a;
};
template <class T>
concept Plus = requires(T a) {
  +a;
};
template <class T>
concept Inverts = requires(T a) {
  ~a;
};
template <class T>
concept Steps = requires(T a) {
  ++a;
};

template <class A, class B> constexpr bool calculates() {
  return Subtracts<A, B> || Multiplies<A, B> || Divides<A, B> || Remains<A, B>;
}
template <class A, class B> constexpr bool orders() {
  return Exceeds<A, B> || PrecedesOrEquals<A, B> || ExceedsOrEquals<A, B> || Compares<A, B>;
}

double half(double number) { return number / 2; }
std::string bytes(String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

} // namespace

TEST(StringAndNumbers, ATextConvertsToTheDoubleAtItsStart) {
  String const text("7.5 metres");
  double const number = text;
  EXPECT_EQ(number, 7.5);
  EXPECT_EQ(half(text), 3.75);
  EXPECT_EQ(double(text) + 1, 8.5);
}

TEST(StringAndNumbers, AnIntegerConvertsToItsDecimalText) {
  String text = 5;
  EXPECT_EQ(bytes(text), "5");
  text = -12l;
  EXPECT_EQ(bytes(text), "-12");
  text = 4000000000ul;
  EXPECT_EQ(bytes(text), "4000000000");
  text = static_cast<unsigned short>(65535);
  EXPECT_EQ(bytes(text), "65535");
  text = kSeven;
  EXPECT_EQ(bytes(text), "7");
  EXPECT_EQ(bytes(7), "7") << "as an argument";
}

TEST(StringAndNumbers, ACharacterConvertsToItselfAndNotToItsNumber) {
  String text = 'c';
  EXPECT_EQ(bytes(text), "c");
  text = '7';
  EXPECT_EQ(bytes(text), "7");
  text = '\0';
  EXPECT_EQ(text.block(), SV::GetEmptyStrData());
}

TEST(StringAndNumbers, ZeroIsANumberAndNoNullPointer) {
  String text = 0;
  EXPECT_EQ(bytes(text), "0");
  text = "before";
  text = 0;
  EXPECT_EQ(bytes(text), "0");
  text = nullptr;
  EXPECT_EQ(text.block(), SV::GetEmptyStrData());
  EXPECT_EQ(String(nullptr).block(), SV::GetEmptyStrData());
}

TEST(StringAndNumbers, CharactersAndIntegersOfUpTo32BitsConvertByThemselves) {
  each(Converting(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    EXPECT_TRUE((std::is_convertible_v<Number, String>)) << typeid(Number).name();
    EXPECT_TRUE((Assigns<String &, Number>)) << typeid(Number).name();
  });
}

// NULL has 64 bits: as an argument it was meant as a pointer.
TEST(StringAndNumbers, IntegersOf64BitsAreConvertedOnlyWhereItIsAskedFor) {
  each(OnlyWhenAskedFor(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    EXPECT_TRUE((std::is_constructible_v<String, Number>)) << typeid(Number).name();
    EXPECT_FALSE((std::is_convertible_v<Number, String>)) << typeid(Number).name();
    EXPECT_FALSE((Assigns<String &, Number>)) << typeid(Number).name();
  });
}

TEST(StringAndNumbers, TruthValuesFractionsBytesAndWideCharactersHaveNoText) {
  each(WithoutAText(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    EXPECT_FALSE((std::is_constructible_v<String, Number>)) << typeid(Number).name();
    EXPECT_FALSE((std::is_convertible_v<Number, String>)) << typeid(Number).name();
    EXPECT_FALSE((Assigns<String &, Number>)) << typeid(Number).name();
  });
}

TEST(StringAndNumbers, ATextIsNoCondition) {
  EXPECT_FALSE(Condition<String>);
  EXPECT_FALSE(Negates<String>);
  EXPECT_FALSE(Joins<String>);
  EXPECT_FALSE((std::is_constructible_v<bool, String>));
}

TEST(StringAndNumbers, ATextIsNoOtherNumberThanADouble) {
  each(Numbers(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    constexpr bool isDouble = std::is_same_v<Number, double>;
    EXPECT_EQ((std::is_convertible_v<String, Number>), isDouble) << typeid(Number).name();
    EXPECT_EQ((std::is_constructible_v<Number, String>), isDouble) << typeid(Number).name();
  });
  EXPECT_FALSE((Indexes<int *, String>));
  EXPECT_FALSE((Indexes<String, int>));
  EXPECT_FALSE((Indexes<String, char const *>));
}

TEST(StringAndNumbers, ATextIsNotWrittenToAStream) {
  EXPECT_FALSE((Shifts<std::ostream &, String>));
  EXPECT_FALSE((Shifts<std::wostream &, String>));
  EXPECT_FALSE((Shifts<std::ostream, String>)) << "one that is about to die";
  EXPECT_FALSE((Shifts<String, int>));
}

TEST(StringAndNumbers, TextsDoNotTakePartInArithmetic) {
  each(Numbers(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    EXPECT_FALSE((Adds<String, Number> || Adds<Number, String>)) << typeid(Number).name();
    EXPECT_FALSE((calculates<String, Number>() || calculates<Number, String>())) << typeid(Number).name();
    EXPECT_FALSE((Appends<Number &, String>)) << typeid(Number).name();
    EXPECT_EQ((Appends<String &, Number>), (std::is_same_v<Number, char>)) << typeid(Number).name();
  });
  EXPECT_FALSE((calculates<String, String>()));
  EXPECT_FALSE(Minus<String> || Plus<String> || Inverts<String> || Steps<String &>);
}

TEST(StringAndNumbers, APointerDoesNotAdvanceByAText) {
  EXPECT_FALSE((Adds<int *, String> || Adds<String, int *>));
  EXPECT_FALSE((Subtracts<char const *, String>));
  EXPECT_FALSE((Appends<char *&, String> || Appends<char const *&, String> || Appends<int *&, String>));
}

TEST(StringAndNumbers, ATextAndANumberAreNotCompared) {
  each(Numbers(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    EXPECT_FALSE((Equals<String, Number> || Equals<Number, String>)) << typeid(Number).name();
    EXPECT_FALSE((Differs<String, Number> || Differs<Number, String>)) << typeid(Number).name();
    EXPECT_FALSE((Precedes<String, Number> || Precedes<Number, String>)) << typeid(Number).name();
    EXPECT_FALSE((orders<String, Number>() || orders<Number, String>())) << typeid(Number).name();
  });
}

// An enumerator is taken as the integer that it stands for, which a text does not convert back to.
TEST(StringAndNumbers, ATextAndANumberAreNoAlternatives) {
  each(Numbers(), [](auto * type) {
    using Number = std::remove_pointer_t<decltype(type)>;
    constexpr bool isPlain = std::is_same_v<Number, Plain>;
    EXPECT_EQ((Chooses<String, Number>), isPlain) << typeid(Number).name();
    EXPECT_EQ((Chooses<Number, String>), isPlain) << typeid(Number).name();
  });
}

TEST(StringAndNumbers, TextsAreOrderedAsTextsOnly) {
  EXPECT_FALSE((orders<String, String>()));
  String const nine("9");
  String const ten("10");
  EXPECT_TRUE(ten < nine);
  EXPECT_TRUE(std::less<>()(ten, nine));
  EXPECT_TRUE(std::pair(ten, 1) < std::pair(nine, 0));
  EXPECT_TRUE(std::tuple(ten) < std::tuple(nine));
  EXPECT_FALSE(String("1") == String("1.0"));
}

TEST(StringAndNumbers, PointersAndBuffersStillStandForTheirText) {
  char buffer[] = "b";
  char * const pointer = buffer;
  char const * const null = nullptr;
  String const text("a");
  EXPECT_EQ(bytes(text + buffer + pointer + "c" + null + nullptr), "abbc");
  EXPECT_EQ(bytes(buffer + (pointer + ("c" + (null + text)))), "bbca");
  EXPECT_TRUE(text == "a" && "a" == text);
  EXPECT_TRUE(text != buffer && text < buffer);
  EXPECT_TRUE(pointer != text);
  EXPECT_TRUE(String() == nullptr && text != nullptr);
  EXPECT_EQ(bytes(text.Len() > 0 ? text : "none"), "a");
  String appended(text);
  appended += buffer;
  appended += 'c';
  EXPECT_EQ(bytes(appended), "abc");
}
