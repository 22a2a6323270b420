// What any font tool must do for the training screen: identifiers, renumbering, tables, nothing versus empty,
// fonts. Instantiate with a bench that owns a tool with no fonts:
//
//     struct Bench {
//         FontTool& tool();
//         void show(const std::string& text);  // lets the tool see an image of that text (0-9 A B C E H L T)
//     };
//     INSTANTIATE_TYPED_TEST_SUITE_P(Name, FontToolContract, Bench);
#pragma once

#include "support/Testing.h"
#include "tool/FontTool.h"
#include "tool/Samples.h"

namespace dravik {

using namespace tool;

template <typename Bench>
class FontToolContract : public testing::Test {
  protected:
    FontTool& tool() { return bench_.tool(); }

    void include(const std::string& shown, const std::string& typed) {
        bench_.show(shown);
        tool().IncludeSamples(typed);
    }
    void commit(const std::string& text) {
        include(text, text);
        tool().CommitNewSamples();
    }
    void train() {
        tool().StartTraining();
        while (!tool().IsTrainingDone()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    // The labels of all records that a selector names; "(none)" when the tool returns nothing.
    std::string labels(std::int32_t selector) {
        const RecordTablePtr table = tool().GetSampleData(selector, kSampleFields);
        if (!table) return "(none)";
        std::string text;
        for (int row = 1; row <= table->upperRow(); ++row) text += table->character(row);
        return text;
    }
    // "A1B0": the font's character records with their trained counts.
    std::string trainedCounts() {
        const RecordTablePtr table = tool().GetSampleData(kAllTrained, kCharacterFields);
        if (!table) return "(none)";
        std::string text;
        for (int row = 1; row <= table->upperRow(); ++row)
            text += table->character(row) + std::to_string(static_cast<int>(table->number(row, 2)));
        return text;
    }

  private:
    Bench bench_;
};

TYPED_TEST_SUITE_P(FontToolContract);

TYPED_TEST_P(FontToolContract, NewFontHasNothing) {
    EXPECT_TRUE(this->tool().GetFontList().empty());
    EXPECT_THROW(this->include("A", "A"), Failure);
    this->tool().CreateFont("New");
    EXPECT_THAT(this->tool().GetFontList(), testing::ElementsAre("New"));
    EXPECT_TRUE(this->tool().GetCharacterSet().empty());
    EXPECT_TRUE(this->tool().GetUncommittedSamples().empty());
    for (const std::int32_t selector : {kAllTrained, kAllUncommitted, kAllCommitted})
        EXPECT_EQ(this->tool().GetSampleData(selector, kSampleFields), nullptr) << selector;
    EXPECT_THROW(this->tool().StartTraining(), Failure);
}

TYPED_TEST_P(FontToolContract, IncludesLabelInOrderAndCommitBehindOthers) {
    this->tool().CreateFont("F");
    this->include("ABC", "ABC");
    EXPECT_THAT(this->tool().GetUncommittedSamples(), testing::ElementsAre("A", "B", "C"));
    EXPECT_EQ(this->labels(kAllUncommitted), "ABC");
    EXPECT_EQ(this->labels(kAllCommitted), "(none)");
    this->tool().CommitNewSamples();
    EXPECT_TRUE(this->tool().GetUncommittedSamples().empty());
    EXPECT_EQ(this->labels(kAllUncommitted), "(none)");
    this->commit("12");
    EXPECT_EQ(this->labels(kAllCommitted), "ABC12");

    // The number found counts, not the number typed: the screen compares the two.
    this->include("123", "12");
    EXPECT_EQ(this->labels(kAllUncommitted).size(), 3u);
    EXPECT_EQ(this->labels(kAllUncommitted).substr(0, 2), "12");
    for (int call = 0; call < 4; ++call) this->tool().DeleteSample(200000);
    EXPECT_EQ(this->labels(kAllUncommitted), "(none)");
    this->include("12", "1234");
    EXPECT_EQ(this->labels(kAllUncommitted), "12");
}

TYPED_TEST_P(FontToolContract, DeletionMovesLaterSamplesDown) {
    this->tool().CreateFont("F");
    this->commit("0123456789");
    for (int call = 0; call < 3; ++call) this->tool().DeleteSample(300002);
    EXPECT_EQ(this->labels(kAllCommitted), "0156789");
    this->tool().DeleteSample(300006);
    EXPECT_EQ(this->labels(kAllCommitted), "015678");
    // Undo and clearing make one call too many, which must not be reported.
    EXPECT_NO_THROW(this->tool().DeleteSample(300006));
    EXPECT_NO_THROW(this->tool().DeleteSample(200000));
    EXPECT_EQ(this->labels(kAllCommitted), "015678");
    EXPECT_THROW(this->tool().DeleteSample(100000), Failure);
    EXPECT_THROW(this->tool().DeleteSample(-1), Failure);
    EXPECT_THROW(this->tool().DeleteSample(400000), Failure);
}

TYPED_TEST_P(FontToolContract, TablesHaveHeadingsIdentifiersAndRanges) {
    this->tool().CreateFont("F");
    this->tool().SetCharacterSet({"A", "B"});
    this->commit("AB");
    const RecordTablePtr samples = this->tool().GetSampleData(kAllCommitted, kSampleFields);
    ASSERT_TRUE(samples);
    EXPECT_EQ(samples->upperRow(), 2);
    EXPECT_EQ(samples->upperColumn(), 53);
    for (int column = 0; column <= 53; ++column) EXPECT_FALSE(isNumeric(samples->cell(0, column))) << column;
    for (int row = 1; row <= 2; ++row) {
        EXPECT_EQ(samples->number(row, 0), 300000 + row - 1);
        EXPECT_GE(samples->number(row, 2), 0);
        double sum = 0;
        for (int column = 5; column <= 53; ++column) {
            const double feature = samples->number(row, column);
            EXPECT_TRUE(feature >= 0 && feature <= 1) << row << "," << column << ": " << feature;
            EXPECT_EQ(cellNumber(samples->cell(row, column)), feature);
            sum += feature;
        }
        EXPECT_GT(sum, 0);
        EXPECT_EQ(samples->codes()[static_cast<std::size_t>(row) - 1], samples->number(row, 1));
        EXPECT_EQ(samples->values()[static_cast<std::size_t>(row) - 1], samples->number(row, 2));
    }
    EXPECT_THROW(samples->cell(3, 0), Failure);
    EXPECT_THROW(samples->cell(0, 54), Failure);
    EXPECT_THROW(samples->cell(-1, 0), Failure);

    const RecordTablePtr characters = this->tool().GetSampleData(kAllTrained, kCharacterFields);
    ASSERT_TRUE(characters);
    EXPECT_EQ(characters->upperRow(), 2);
    EXPECT_EQ(characters->upperColumn(), 52);
    EXPECT_EQ(characters->number(2, 1), 'B');
    EXPECT_EQ(characters->number(2, 2), 0);
}

TYPED_TEST_P(FontToolContract, SelectorsNameOneSeveralOrNoRecord) {
    this->tool().CreateFont("F");
    this->commit("ABC");
    this->include("12", "12");
    EXPECT_EQ(this->labels(300001), "B");
    this->tool().SetCharacterSet({"X", "Y"});
    EXPECT_EQ(this->labels(100001), "Y");
    EXPECT_EQ(this->labels(100002), "(none)");
    EXPECT_EQ(this->labels(300003), "(none)");
    for (const std::int32_t unknown : {0, -5, 99999, 400000, 499999})
        EXPECT_EQ(this->labels(unknown), "(none)");
    const std::vector<std::int32_t> several = {300002, 399998, kAllUncommitted, 300000};
    const RecordTablePtr table = this->tool().GetSampleData(several, kSampleFields);
    ASSERT_TRUE(table);
    ASSERT_EQ(table->upperRow(), 4);
    std::vector<std::pair<double, std::string>> named;
    for (int row = 1; row <= 4; ++row) named.emplace_back(table->number(row, 0), table->character(row));
    EXPECT_THAT(named, testing::ElementsAre(std::pair(300002, "C"), std::pair(200000, "1"),
                                            std::pair(200001, "2"), std::pair(300000, "A")));
}

TYPED_TEST_P(FontToolContract, TablesStayAsTheyWere) {
    this->tool().CreateFont("F");
    this->commit("ABC");
    const RecordTablePtr before = this->tool().GetSampleData(kAllCommitted, kSampleFields);
    const auto cells = [&] {
        std::vector<double> numbers;
        for (int cell = 0; cell < 3 * 54; ++cell) numbers.push_back(before->number(1 + cell / 54, cell % 54));
        return numbers;
    };
    const auto atFirst = cells();
    this->tool().DeleteSample(300000);
    this->commit("0123456789");
    this->train();
    this->tool().CreateFont("Other");
    EXPECT_EQ(cells(), atFirst);
    EXPECT_THAT(before->codes(), testing::ElementsAre('A', 'B', 'C'));
}

TYPED_TEST_P(FontToolContract, TrainingCountsSavesAndReverts) {
    this->tool().CreateFont("F");
    this->tool().SetCharacterSet({"B", "", "A", "B", "7"});
    EXPECT_THAT(this->tool().GetCharacterSet(), testing::ElementsAre("B", "A", "7"));
    this->commit("ABA");
    EXPECT_EQ(this->trainedCounts(), "B0A070");
    this->train();
    EXPECT_FALSE(this->tool().IsTrainingAborted());
    EXPECT_GT(this->tool().GetTrainCycles(), 0);
    EXPECT_GE(this->tool().GetRmsError(), 0);
    EXPECT_EQ(this->trainedCounts(), "B1A270");
    this->tool().SaveFont("F");

    // A character outside the set is listed behind it; reverting forgets the training but no sample.
    this->commit("CBC");
    EXPECT_EQ(this->trainedCounts(), "B1A270");
    this->train();
    EXPECT_EQ(this->trainedCounts(), "B2A270C2");
    this->tool().RevertFont("F");
    EXPECT_EQ(this->trainedCounts(), "B1A270");
    EXPECT_EQ(this->labels(kAllCommitted), "ABACBC");
    // Loading the font that is current already keeps what is not saved of it.
    this->tool().LoadFont("F");
    EXPECT_EQ(this->trainedCounts(), "B1A270");
    EXPECT_EQ(this->labels(kAllCommitted), "ABACBC");
}

TYPED_TEST_P(FontToolContract, FontsAreCopiedRenamedAndDeleted) {
    this->tool().CreateFont("b font");
    this->commit("AB");
    this->tool().SaveFont("b font");
    this->tool().DuplicateFont("Copy", "b font");
    this->tool().DuplicateFont("a font", "b font");
    EXPECT_THAT(this->tool().GetFontList(), testing::UnorderedElementsAre("a font", "b font", "Copy"));
    EXPECT_THROW(this->tool().DuplicateFont("Copy", "a font"), Failure);
    EXPECT_THROW(this->tool().RenameFont("Copy", "a font"), Failure);
    EXPECT_THROW(this->tool().RenameFont("z", "nothing"), Failure);
    EXPECT_THROW(this->tool().DeleteFont("nothing"), Failure);

    // The current font keeps what is not yet saved while its name changes.
    this->commit("C");
    this->tool().RenameFont("Renamed", "b font");
    EXPECT_EQ(this->labels(kAllCommitted), "ABC");
    this->tool().SaveFont("Renamed");
    EXPECT_THROW(this->tool().LoadFont("b font"), Failure);
    EXPECT_EQ(this->labels(kAllCommitted), "ABC");
    this->tool().LoadFont("Copy");
    EXPECT_EQ(this->labels(kAllCommitted), "AB");
    this->tool().LoadFont("Renamed");
    EXPECT_EQ(this->labels(kAllCommitted), "ABC");
    this->tool().DeleteFont("Renamed");
    EXPECT_THAT(this->tool().GetFontList(), testing::UnorderedElementsAre("a font", "Copy"));
    EXPECT_EQ(this->labels(kAllCommitted), "(none)");
}

TYPED_TEST_P(FontToolContract, StoppedRunIsDoneAndLeavesTheFontUsable) {
    this->tool().CreateFont("F");
    this->commit("0123456789");
    this->tool().SetTrainTimeout(30);
    EXPECT_EQ(this->tool().GetTrainTimeout(), 30);
    this->tool().StartTraining();
    EXPECT_NO_THROW(this->tool().StopTraining());
    EXPECT_TRUE(this->tool().IsTrainingDone());
    // Unless it was the quicker one.
    EXPECT_EQ(this->tool().IsTrainingAborted(), this->trainedCounts() == "(none)");
    EXPECT_NO_THROW(this->tool().StopTraining());
    this->tool().DeleteSample(300000);
    this->train();
    EXPECT_EQ(this->trainedCounts(), "112131415161718191");
}

REGISTER_TYPED_TEST_SUITE_P(FontToolContract, NewFontHasNothing, IncludesLabelInOrderAndCommitBehindOthers,
                            DeletionMovesLaterSamplesDown, TablesHaveHeadingsIdentifiersAndRanges,
                            SelectorsNameOneSeveralOrNoRecord, TablesStayAsTheyWere,
                            TrainingCountsSavesAndReverts, FontsAreCopiedRenamedAndDeleted,
                            StoppedRunIsDoneAndLeavesTheFontUsable);

}  // namespace dravik
