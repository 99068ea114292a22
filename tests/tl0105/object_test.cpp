#include "tools/object.hpp"

#include <gtest/gtest.h>

#include <type_traits>

using SV::LinkHdl;

namespace {

int destroyed = 0;

/// Adds no data: a derived class is as large as its root.
class Derived : public KivObject {
public:
  ~Derived() override { ++destroyed; }

  void checkOwnState() const { check(); }
};

struct Other : LinkHdl {};

template <class T>
concept LetsOthersCheck = requires(T const & object) {
  object.check();
};

} // namespace

TEST(KivObjectTest, IsALinkHdlWithoutDataOfItsOwn) {
  static_assert(std::is_base_of_v<LinkHdl, KivObject>);
  static_assert(std::is_polymorphic_v<LinkHdl>);
  static_assert(sizeof(LinkHdl) == sizeof(void *) && sizeof(KivObject) == sizeof(LinkHdl));
  static_assert(sizeof(Derived) == sizeof(KivObject));
}

TEST(KivObjectTest, IsDeletedThroughEitherRoot) {
  static_assert(std::has_virtual_destructor_v<LinkHdl> && std::has_virtual_destructor_v<KivObject>);
  destroyed = 0;
  KivObject * const object = new Derived;
  delete object;
  EXPECT_EQ(destroyed, 1);
  LinkHdl * const link = new Derived;
  delete link;
  EXPECT_EQ(destroyed, 2);
}

TEST(KivObjectTest, IsFoundThroughALinkByItsType) {
  Derived derived;
  Other other;
  LinkHdl * link = &derived;
  EXPECT_EQ(dynamic_cast<KivObject *>(link), &derived);
  link = &other;
  EXPECT_EQ(dynamic_cast<KivObject *>(link), nullptr);
}

TEST(KivObjectTest, CheckIsForDerivedClassesAlone) {
  static_assert(!LetsOthersCheck<KivObject> && !LetsOthersCheck<Derived>);
  Derived const object;
  object.checkOwnState();
}
