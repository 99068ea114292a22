#include "processmodel.hpp"

#include <gtest/gtest.h>

using modeler::Node;
using modeler::NodeKind;
using modeler::ProcessModel;

TEST(ProcessModel, AddsUpDurationsBeyond32Bits) {
  ProcessModel model;
  for (int i = 0; i < 5; ++i)
    model.nodes.push_back(Node{NodeKind::Activity, "a", "A", 999'999'999});
  EXPECT_EQ(modeler::totalDuration(model), 4'999'999'995LL);
}

TEST(ProcessModel, TakesNoTimeWithoutNodes) { EXPECT_EQ(modeler::totalDuration({}), 0); }
