#include "screen/inspection/SampleCounts.h"

#include "screen/support/ProcedureTest.h"

namespace dravik::test {
namespace {

class SampleCountsTest : public ProcedureTest {
  protected:
    SampleCountsTest() { binding.m_ToolBound = true; }

    std::string dump() { return content(jobs.folder().uncommittedDump()); }

    SampleCounts counts{context};
};

TEST_F(SampleCountsTest, CountsByKindAndByCharacter) {
    tool->addCommitted("A", {0.1, 0.2});
    tool->addCommitted("a", {0.3});
    tool->uncommitted = {{"A", 0, {}}};
    tool->trained = {{"B", 7, {}}, {"A", 12, {}}};
    EXPECT_THAT((std::vector<int>{counts.NumberCommittedAll(), counts.NumberUncommittedAll(),
                                  counts.NumberCommitted("A"), counts.NumberCommitted("z"),
                                  counts.NumberTrained("A"), counts.NumberTrained("z")}),
                ElementsAre(3, 1, 2, 0, 12, 0));
    EXPECT_EQ(message(), "");
}

TEST_F(SampleCountsTest, WhatCannotBeCountedIsReported) {
    EXPECT_EQ(counts.NumberUncommittedAll(), 0);
    EXPECT_EQ(message(), "NumberUncommittedAll Err 13 Type mismatch");
    tool->trained = {{"A", 40000, {}}};
    EXPECT_EQ(counts.NumberTrained("A"), 0);
    EXPECT_EQ(message(), "NumberTrained Err 6 Overflow");
    tool->setAnswer(kAllCommitted, {{"No"}, {1.0}});
    EXPECT_EQ(counts.NumberCommitted("A"), 0);
    EXPECT_EQ(message(), "NumberCommitted Err 9 Subscript out of range");
}

TEST_F(SampleCountsTest, TheDumpHoldsARowPerSampleAndEndsEveryLineInAComma) {
    tool->setAnswer(kAllUncommitted, {{"No", "Code", "Distance", "Note"},
                                      {200000.0, 66.0, 1.0, "7"},
                                      {200001.0, 65.0, 12.0, "x"},
                                      {200002.0, 65.0, 3.5, std::monostate{}}});
    counts.SaveUncommitted();
    EXPECT_EQ(dump(),
              "No,Code,Distance,Note,\r\n"
              "0,B,1.000,7.000,\r\n"
              "1,A,12.000,x,\r\n"
              "2,A,3.500,,\r\n");
    tool->failAt("GetSampleData", 70, "Permission denied");
    counts.SaveUncommitted();
    EXPECT_NE(dump(), "") << "what was saved stays until there is something in its place";
    EXPECT_EQ(message(), "SaveUncommitted Err 70 Permission denied");
}

}  // namespace
}  // namespace dravik::test
