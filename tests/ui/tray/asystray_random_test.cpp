// Every operation of the tray icon in every state, with a shell that refuses, forgets, ends and begins, against a model.
#include "support/data/random.hpp"
#include "ui/tray/traytest.hpp"

#include <map>
#include <set>

namespace {

using traytest::Lines;
using traytest::Tray;

/// What the program believes, and what the shell has.
class Model {
public:
  bool isHidden = true;
  bool isRemoved = true;
  bool isPending = false;
  unsigned creationFlags = 0;

  bool hasShell = true;
  bool shellRefuses = false;
  bool shellHasIcon = false;
  bool shellHides = false;

  Lines calls; ///< of the shell
  Lines reports;

  std::string state() const { return std::to_string(isHidden) + std::to_string(isRemoved) + std::to_string(isPending); }

  int create(bool hidden) {
    remove();
    shellHasIcon = false; // its window is destroyed
    isHidden = isRemoved = true;
    creationFlags = hidden ? 8 : 7;
    bool const added = call("add", creationFlags, hidden);
    isHidden = hidden || !added;
    isRemoved = isPending = !added;
    return added;
  }
  int remove() {
    isPending = false;
    if (!isRemoved && call("delete", 0))
      isHidden = isRemoved = true;
    return isRemoved;
  }
  int add() {
    if (!isRemoved)
      remove();
    bool const added = call("add", 7);
    isHidden = isRemoved = isPending = !added;
    return added;
  }
  int hide() {
    if (!isRemoved && !isHidden)
      isHidden = call("modify", 8, true);
    return isHidden;
  }
  int show() {
    if (isRemoved)
      add();
    else if (isHidden)
      isHidden = !call("modify", 8, false);
    return !isHidden;
  }
  int move() {
    remove();
    return add();
  }
  int change(unsigned flags) { return isHidden || call("modify", flags); }
  int balloon() { return call("modify", 0x10); }

  /// A shell has begun.
  void begun() {
    if (!isPending || (isHidden && !isRemoved))
      return;
    isPending = call("add", creationFlags, creationFlags == 8);
    isHidden = isRemoved = !isPending;
    if (!isPending)
      reports.emplace_back("m_bHidden == FALSE (asystray)");
  }

private:
  bool call(std::string const & what, unsigned flags, bool hides = false) {
    if (!hasShell)
      return false;
    bool const taken = !shellRefuses && shellHasIcon != (what == "add");
    if (taken) {
      shellHasIcon = what != "delete";
      if (flags == 8)
        shellHides = hides;
      else if (what == "add")
        shellHides = false;
    }
    char line[100];
    std::snprintf(line, sizeof line, "%s 5 flags %x: %s", what.c_str(), flags, taken ? "taken" : "refused");
    calls.emplace_back(line);
    return taken;
  }
};

class TrayModel : public traytest::TrayTest {
protected:
  struct Operation {
    char const * name;
    std::function<int()> real;
    std::function<int()> expected;
  };

  TrayModel() {
    start();
    operations = {
        {"create", [this] { return create(tray); }, [this] { return model.create(false); }},
        {"create hidden", [this] { return create(tray, TRUE); }, [this] { return model.create(true); }},
        {"show", [this] { return tray.ShowIcon(); }, [this] { return model.show(); }},
        {"hide", [this] { return tray.HideIcon(); }, [this] { return model.hide(); }},
        {"add", [this] { return tray.AddIcon(); }, [this] { return model.add(); }},
        {"remove", [this] { return tray.RemoveIcon(); }, [this] { return model.remove(); }},
        {"move", [this] { return tray.MoveToRight(); }, [this] { return model.move(); }},
        {"tip", [this] { return tray.SetTooltipText("Other"); }, [this] { return model.change(4); }},
        {"icon", [this] { return tray.SetStandardIcon(IDI_ERROR); }, [this] { return model.change(2); }},
        {"message", [this] { return tray.SetCallbackMessage(kMessage); }, [this] { return model.change(1); }},
        {"window", [this] { return tray.SetNotificationWnd(tray.GetSafeHwnd()); }, [this] { return model.change(0); }},
        {"balloon", [this] { return tray.ShowBalloon("Text", "", 0, 10); }, [this] { return model.balloon(); }},
        {"begun", [this] { return static_cast<int>(tray.OnTaskbarCreated(0, 0)); },
         [this] {
           model.begun();
           return 0;
         }}};
  }

  /// Refuses, takes again, forgets all with a broadcast, ends or begins.
  void changeShell(unsigned choice) {
    if (choice < 4) {
      if (model.hasShell)
        shell->refuse(choice < 2);
      model.shellRefuses = model.hasShell && choice < 2;
    } else if (choice < 6 && model.hasShell) {
      shell->forget();
      settle();
      model.shellHasIcon = false;
      model.begun();
    } else if (choice == 6)
      toggleShell();
  }

  void toggleShell() {
    if (model.hasShell)
      stop();
    else
      start();
    model.hasShell = !model.hasShell;
    model.shellRefuses = model.shellHasIcon = false;
    if (model.hasShell)
      model.begun();
  }

  void compare() {
    ASSERT_EQ(stateOf(tray), model.state());
    ASSERT_EQ(traytest::assertions(), model.reports);
    if (!model.hasShell) {
      model.calls.clear();
      return;
    }
    ASSERT_EQ(shell->shortCalls(), model.calls);
    ASSERT_EQ(shell->count(), model.shellHasIcon);
    ASSERT_EQ(shell->visible(), model.shellHasIcon && !model.shellHides);
    model.calls.clear();
  }

  Tray tray;
  Model model;
  std::vector<Operation> operations;
  std::set<std::string> seen;
};

TEST_F(TrayModel, AgreesWithTheIconInEveryStateAndOperation) {
  create(tray);
  model.create(false);
  support::Random random(25);
  for (std::size_t i = 0; i < support::times(1500); ++i) {
    if (random() % 4 == 0)
      changeShell(static_cast<unsigned>(random() % (random() % 8 == 0 ? 7 : 6)));
    Operation const & operation = operations[random() % operations.size()];
    seen.insert(model.state() + " " + operation.name);
    SCOPED_TRACE(std::to_string(i) + ": " + model.state() + " " + operation.name);
    ASSERT_EQ(operation.real(), operation.expected());
    ASSERT_NO_FATAL_FAILURE(compare());
  }
  for (char const * const state : {"110", "000", "100", "111"})
    for (Operation const & operation : operations)
      EXPECT_TRUE(seen.contains(std::string(state) + " " + operation.name)) << state << " " << operation.name;
  expectedAssertions = model.reports;
}

} // namespace
