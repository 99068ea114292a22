#include "acleanup.hpp"

#include "support/data/files.hpp"
#include "support/imports/import_spy.hpp"
#include "support/memory/allocation.hpp"
#include "tools/containers.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using SV::String;

namespace {

using Steps = std::vector<std::string>;

class Exit : public KivEvent {
public:
  Exit() : KivEvent(KIV_EVENT_AppExit) {}
};

void triggerExit() {
  Exit event;
  event.trigger();
}

/// An action that notes its steps.
class Noted : public KivCleanUpAction {
public:
  Noted(Steps & steps, std::string name, std::function<void()> then = {})
      : steps_(steps), name_(std::move(name)), then_(std::move(then)) {}
  ~Noted() override { steps_.push_back(name_ + " deleted"); }
  bool execute() override {
    steps_.push_back(name_);
    if (then_)
      then_();
    return false; // nobody asks
  }

private:
  Steps & steps_;
  std::string name_;
  std::function<void()> then_;
};

/// The actions of all tests note here: what is left of a failed one runs when the process ends.
Steps & steps() {
  static auto * const all = new Steps;
  return *all;
}

void add(std::string const & name, std::function<void()> then = {}) {
  KivCleanUp::Instance().AddAction(new Noted(steps(), name, std::move(then)));
}

void addFile(char const * name) {
  support::writeFile(name, "temporary");
  KivCleanUp::Instance().AddFileCleanUpAction(name);
}

TEST(CleanUp, RunsAndDeletesItsActionsInTheOrderOfTheirRegistration) {
  add("a");
  add("b");
  add("c");
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a", "a deleted", "b", "b deleted", "c", "c deleted"}));
}

TEST(CleanUp, RunsEachActionOnceForTwoEvents) {
  add("a");
  triggerExit();
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a", "a deleted"}));
}

TEST(CleanUp, AnActionAddedAfterTheEventWaitsForTheNext) {
  add("a");
  triggerExit();
  add("b");
  EXPECT_EQ(steps().size(), 2u);
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a", "a deleted", "b", "b deleted"}));
}

TEST(CleanUp, OtherEventsRunNothing) {
  class Other : public KivEvent {
  public:
    Other() : KivEvent(KIV_EVENT_AppInitialized) {}
  } other;
  addFile("a.tmp");
  other.trigger();
  EXPECT_TRUE(support::exists("a.tmp"));
  triggerExit();
  EXPECT_FALSE(support::exists("a.tmp"));
}

TEST(CleanUp, ListensAtPriority0) {
  class Early : public KivEventListener {
  public:
    explicit Early(KivEventPriority priority) { setEventHandler(KIV_EVENT_AppExit, &Early::note, priority); }

  private:
    void note(KivEvent *) { steps().push_back("listener"); }
  };
  add("a");
  Early const before(static_cast<KivEventPriority>(1));
  Early const after(static_cast<KivEventPriority>(-1));
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"listener", "a", "a deleted", "listener"}));
}

TEST(CleanUp, RemovesFilesInTheOrderOfTheirRegistration) {
  static Steps removed;
  ASSERT_TRUE(support::spyOnImport("kivara.dll", "remove",
                                   [](support::SpiedCall const & call) { removed.emplace_back(call.text(0)); }));
  addFile("b.tmp");
  addFile("a.tmp");
  KivCleanUp::Instance().AddFileCleanUpAction("missing.tmp");
  addFile("c.tmp");
  triggerExit();
  EXPECT_EQ(removed, (Steps{"b.tmp", "a.tmp", "missing.tmp", "c.tmp"}));
  for (char const * const name : {"a.tmp", "b.tmp", "c.tmp"})
    EXPECT_FALSE(support::exists(name)) << name;
}

TEST(CleanUp, AFileThatCannotBeRemovedStopsNothing) {
  support::FileInUse const inUse("a.tmp");
  KivCleanUp::Instance().AddFileCleanUpAction("a.tmp");
  addFile("b.tmp");
  triggerExit();
  EXPECT_TRUE(support::exists("a.tmp"));
  EXPECT_FALSE(support::exists("b.tmp"));
}

TEST(CleanUp, ForgetsAFileThatIsTakenOut) {
  addFile("a.tmp");
  addFile("b.tmp");
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tmp");
  triggerExit();
  EXPECT_TRUE(support::exists("a.tmp"));
  EXPECT_FALSE(support::exists("b.tmp"));
}

TEST(CleanUp, TakingOutANameThatWasAddedTwiceLeavesOneOfThem) {
  addFile("a.tmp");
  addFile("b.tmp");
  addFile("a.tmp");
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tmp");
  triggerExit();
  EXPECT_FALSE(support::exists("a.tmp"));
  EXPECT_FALSE(support::exists("b.tmp"));
}

TEST(CleanUp, TakesTheFirstOfANameOut) {
  static Steps removed;
  support::spyOnImport("kivara.dll", "remove",
                       [](support::SpiedCall const & call) { removed.emplace_back(call.text(0)); });
  for (char const * const name : {"a.tmp", "b.tmp", "a.tmp"})
    KivCleanUp::Instance().AddFileCleanUpAction(name);
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tmp");
  triggerExit();
  EXPECT_EQ(removed, (Steps{"b.tmp", "a.tmp"}));
}

TEST(CleanUp, KnowsANameByItsBlockOrByItsBytes) {
  String const shared("a.tmp");
  addFile("b.tmp");
  support::writeFile("a.tmp", "");
  KivCleanUp::Instance().AddFileCleanUpAction(shared);
  KivCleanUp::Instance().RemoveFileCleanUpAction(shared);
  KivCleanUp::Instance().RemoveFileCleanUpAction(String("b.t") + "mp");
  triggerExit();
  EXPECT_TRUE(support::exists("a.tmp"));
  EXPECT_TRUE(support::exists("b.tmp"));
}

// The file system may take both names for the same file; the registry does not.
TEST(CleanUp, ANameThatDiffersInCaseIsNotTakenOut) {
  addFile("a.tmp");
  KivCleanUp::Instance().RemoveFileCleanUpAction("A.tmp");
  triggerExit();
  EXPECT_FALSE(support::exists("a.tmp"));
}

TEST(CleanUp, NamesOfDifferentLengthDiffer) {
  addFile("a.tmp");
  KivCleanUp::Instance().RemoveFileCleanUpAction(String("a.tmp\0x", 7));
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tm");
  triggerExit();
  EXPECT_FALSE(support::exists("a.tmp"));
}

TEST(CleanUp, NamesOfOneLengthThatDifferAfterANulAreTheSame) {
  addFile("b.tmp");
  support::writeFile("a.tmp", "");
  KivCleanUp::Instance().AddFileCleanUpAction(String("a.tmp\0x", 7));
  KivCleanUp::Instance().RemoveFileCleanUpAction(String("a.tmp\0y", 7));
  triggerExit();
  EXPECT_TRUE(support::exists("a.tmp"));
  EXPECT_FALSE(support::exists("b.tmp"));
}

TEST(CleanUp, TakingOutPassesOverOtherKindsOfActionsAndUnknownNames) {
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tmp");
  add("a.tmp");
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tmp");
  KivCleanUp::Instance().RemoveFileCleanUpAction("");
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a.tmp", "a.tmp deleted"}));
}

TEST(CleanUp, NullIsPassedOver) {
  KivCleanUp::Instance().AddAction(nullptr);
  KivCleanUp::Instance().RemoveFileCleanUpAction("a.tmp");
  triggerExit();
}

TEST(CleanUp, AnActionIsOwnedEvenWhenThereIsNoMemoryForIt) {
  KivCleanUp & registry = KivCleanUp::Instance();
  auto * const action = new Noted(steps(), "a");
  steps().reserve(4);
  {
    support::AllocationLimit const limit(0);
    EXPECT_THROW(registry.AddAction(action), std::bad_alloc);
  }
  EXPECT_EQ(steps(), (Steps{"a deleted"}));
  triggerExit();
  EXPECT_EQ(steps().size(), 1u);
}

TEST(CleanUp, AnActionMayAddOthersWhichRunInTheSameWalk) {
  add("a", [] { add("late"); });
  add("b");
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a", "a deleted", "b", "b deleted", "late", "late deleted"}));
}

TEST(CleanUp, AnActionMayTakeOutFiles) {
  add("a", [] { KivCleanUp::Instance().RemoveFileCleanUpAction("c.tmp"); });
  addFile("b.tmp");
  addFile("c.tmp");
  addFile("d.tmp");
  triggerExit();
  EXPECT_FALSE(support::exists("b.tmp"));
  EXPECT_TRUE(support::exists("c.tmp"));
  EXPECT_FALSE(support::exists("d.tmp"));
}

TEST(CleanUp, AnActionThatEndsTheProgramOnceMoreRunsTheRestAndNothingTwice) {
  add("a", triggerExit);
  add("b");
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a", "b", "b deleted", "a deleted"}));
}

TEST(CleanUp, AnExceptionFromAnActionLeavesTheRestToTheNextEvent) {
  add("a", [] { throw std::runtime_error("from a"); });
  add("b");
  EXPECT_THROW(triggerExit(), std::runtime_error);
  EXPECT_EQ(steps(), (Steps{"a", "a deleted"}));
  triggerExit();
  EXPECT_EQ(steps(), (Steps{"a", "a deleted", "b", "b deleted"}));
}

TEST(FileCleanUpAction, AnswersWhetherTheFileCouldBeRemoved) {
  support::writeFile("a.tmp", "");
  KivFileCleanUpAction action("a.tmp");
  EXPECT_EQ(action.GetFileName(), String("a.tmp"));
  EXPECT_TRUE(action.execute());
  EXPECT_FALSE(action.execute());
  EXPECT_FALSE(KivFileCleanUpAction("").execute());
}

TEST(FileCleanUpAction, KeepsASharedCopyOfTheName) {
  String const name("a.tmp");
  EXPECT_EQ(KivFileCleanUpAction(name).GetFileName().block(), name.block());
}

TEST(SingletonDeleteAction, DeletesOnce) {
  struct Singleton {
    ~Singleton() { steps().push_back("singleton deleted"); }
  };
  KivSingletonDeleteAction<Singleton> action(new Singleton);
  EXPECT_TRUE(action.execute());
  EXPECT_EQ(steps(), (Steps{"singleton deleted"}));
  EXPECT_TRUE(action.execute());
  EXPECT_EQ(steps().size(), 1u);
}

TEST(SingletonDeleteAction, LeavesTheObjectUnlessItIsExecuted) {
  bool isDeleted = false;
  struct Singleton {
    bool & deleted;
    ~Singleton() { deleted = true; }
  } singleton{isDeleted};
  { KivSingletonDeleteAction<Singleton> const action(&singleton); }
  EXPECT_FALSE(isDeleted);
}

TEST(SingletonDeleteAction, TakesNull) {
  KivSingletonDeleteAction<String> action(nullptr);
  EXPECT_TRUE(action.execute());
}

TEST(SingletonDeleteAction, DeletesTheSetOfTheMessageBoxes) {
  using Shown = IKeySortedSet<String, String, std::less<String>>;
  auto * const shown = new Shown;
  String const text("a text of many bytes that is kept in the set");
  (*shown)[text] = text;
  ASSERT_EQ(text.block()->nRefCount, 2) << "the owners besides the first";
  KivCleanUp::Instance().AddAction(new KivSingletonDeleteAction<Shown>(shown));
  triggerExit();
  EXPECT_EQ(text.block()->nRefCount, 0);
}

TEST(CleanUp, IsOneObject) { EXPECT_EQ(&KivCleanUp::Instance(), &KivCleanUp::Instance()); }

TEST(CleanUp, TheEventIsNotReadAndMayBeNull) {
  struct Open : KivCleanUp {
    static void run(KivCleanUp & registry) { (registry.*&Open::_onExit)(nullptr); }
  };
  add("a");
  Open::run(KivCleanUp::Instance());
  EXPECT_EQ(steps(), (Steps{"a", "a deleted"}));
}

} // namespace
