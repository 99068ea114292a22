#include "sv0105/controls/dialogtest.hpp"

#include <string_view>

// Sizes and texts at their limits, for every control.
namespace {

using MakeControl = std::unique_ptr<SV::Control> (*)(SV::Window * parent);

template <class T, SV::WinBits style> std::unique_ptr<SV::Control> made(SV::Window * parent) {
  return std::make_unique<T>(parent, style);
}

std::unique_ptr<SV::Control> filledList(SV::Window * parent) {
  auto list = std::make_unique<SV::ListBox>(parent, SV::WB_BORDER);
  for (int i = 0; i < 100; ++i)
    list->InsertEntry(("M\xE4rz " + std::to_string(i)).c_str());
  return list;
}

std::unique_ptr<SV::Control> errorIcon(SV::Window * parent) {
  auto icon = std::make_unique<SV::FixedIcon>(parent);
  icon->ChangeIcon(SV::IconStyle(3));
  return icon;
}

struct Kind {
  char const * name;
  MakeControl make;
};

void PrintTo(Kind const & kind, std::ostream * out) { *out << kind.name; }

constexpr Kind kKinds[] = {{"PushButton", made<SV::PushButton, 0>},
                           {"CheckBox", made<SV::CheckBox, 0>},
                           {"Edit", made<SV::Edit, 0>},
                           {"EditOfLines", made<SV::Edit, SV::WB_MULTILINE>},
                           {"FixedText", made<SV::FixedText, 0>},
                           {"FixedTextOfLines", made<SV::FixedText, SV::WB_MULTILINE>},
                           {"FixedIcon", errorIcon},
                           {"ListBox", filledList},
                           {"MetricField", made<SV::MetricField, 0>}};

class Extremes : public svtest::DialogTest, public testing::WithParamInterface<Kind> {
protected:
  Extremes() {
    dialog.ChangeOutputSizePixel({200, 100});
    dialog.Show();
  }

  SV::Dialog dialog{nullptr};
  std::unique_ptr<SV::Control> control{GetParam().make(&dialog)};
};

TEST_P(Extremes, SizeIsThatOfTheLastCallWithin0And32767) {
  struct {
    SV::Size given;
    SV::Size expected;
  } const rows[] = {{{0, 0}, {0, 0}},
                    {{1, 1}, {1, 1}},
                    {{0, 50}, {0, 50}},
                    {{50, 0}, {50, 0}},
                    {{-1, -1}, {0, 0}},
                    {{-32768, 40}, {0, 40}},
                    {{32767, 1}, {32767, 1}},
                    {{1, 32767}, {1, 32767}},
                    {{32768, 32768}, {32767, 32767}},
                    {{40, -2000000000}, {40, 0}}};
  control->Show();
  for (auto const & row : rows) {
    control->SetPosSizePixel({5, 5}, row.given);
    control->Invalidate();
    control->Update(); // drawn whatever its size
    EXPECT_EQ(control->GetSizePixel(), row.expected) << row.given.width << " x " << row.given.height;
  }
  control->SetPosSizePixel({5, 5}, {60, 20});
  EXPECT_EQ(control->GetSizePixel(), (SV::Size{60, 20})) << "it has not suffered";
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_P(Extremes, TextIsKeptHoweverLongItIs) {
  control->SetPosSizePixel({5, 5}, {60, 20});
  control->Show();
  // The system breaks a line into those of a field in a time that grows with the square of its length.
  std::size_t const most = std::string_view(GetParam().name) == "EditOfLines" ? 1'000 : 1'000'000;
  for (std::string const & text : {std::string(), std::string("M\xFCller & S\xF6hne"), std::string(most, '\xE4')}) {
    control->SetText(text.c_str());
    control->Update();
    EXPECT_EQ(textOf(control->GetText()), text) << text.size();
  }
}

INSTANTIATE_TEST_SUITE_P(Controls, Extremes, testing::ValuesIn(kKinds),
                         [](auto const & kind) { return std::string(kind.param.name); });

} // namespace
