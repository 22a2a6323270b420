// The answers of the documentation's tool in C++, read as the control reads them.
#include "../docs/samples/tool-answers.h"
#include "windows/com/support/ComTest.h"

namespace dravik::test {
namespace {

TEST(SampleCode, RecordTableIsOneThatTheControlReads) {
    Variant answer;
    ASSERT_EQ(recordTable({}, 5, answer.put()), S_OK);
    EXPECT_EQ(tableOf(std::move(answer)), nullptr);
    answer = Variant();
    ASSERT_EQ(recordTable({{300000, 'A', 0.25, std::vector<double>(49, 0.5)},
                           {300001, 'B', 0.75, std::vector<double>(49, 1)}},
                          5, answer.put()),
              S_OK);
    const RecordTablePtr table = tableOf(std::move(answer));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->upperRow(), 2);
    EXPECT_THAT(table->codes(), testing::ElementsAre('A', 'B'));
    EXPECT_THAT(table->values(), testing::ElementsAre(0.25, 0.75));
    EXPECT_EQ(table->number(2, 0), 300001);
    for (int column = table->upperColumn() - kFeatureCount + 1; column <= table->upperColumn(); ++column)
        EXPECT_EQ(table->number(2, column), 1) << column;
    EXPECT_FALSE(isNumeric(table->cell(0, 53)));
}

}  // namespace
}  // namespace dravik::test
