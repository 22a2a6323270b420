// Arrays of every kind that tools answer with, and those that must be refused.
#include "windows/com/ArrayView.h"
#include "windows/com/support/ComTest.h"

namespace dravik::test {
namespace {

// A table of rows x columns with those lower bounds; row r, column c holds 100 * r + c.
template <typename T>
Variant numbers(VARTYPE type, ULONG rows, ULONG columns, LONG rowBound = 0, LONG columnBound = 0) {
    SAFEARRAYBOUND bounds[] = {{rows, rowBound}, {columns, columnBound}};
    SAFEARRAY* array = SafeArrayCreate(type, 2, bounds);
    for (LONG row = 0; row < static_cast<LONG>(rows); ++row)
        for (LONG column = 0; column < static_cast<LONG>(columns); ++column) {
            LONG place[] = {rowBound + row, columnBound + column};
            T value = static_cast<T>(100 * row + column);
            check(SafeArrayPutElement(array, place, &value));
        }
    return Variant::ofArray(type, array);
}

Variant list(VARTYPE type, ULONG count, LONG lowerBound = 0) {
    return Variant::ofArray(type, SafeArrayCreateVector(type, lowerBound, count));
}

// Refers to the value, or to its array of that type.
Variant referenceTo(Variant& value, VARTYPE type = VT_VARIANT) {
    Variant reference;
    reference.get().vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.get().byref = type == VT_VARIANT ? static_cast<void*>(&value.get()) : &value.get().parray;
    return reference;
}

TEST(ToolValues, TablesAndListsAreReadWhateverTheirElementsAndBounds) {
    const auto expectTable = [](Variant value) {
        const RecordTablePtr table = tableOf(std::move(value));
        ASSERT_TRUE(table);
        EXPECT_EQ(table->upperRow(), 2);
        EXPECT_EQ(table->upperColumn(), 3);
        EXPECT_EQ(table->number(0, 3), 3);
        EXPECT_EQ(table->number(2, 0), 200);
        EXPECT_EQ(cellNumber(table->cell(1, 2)), 102);
        EXPECT_THAT(table->codes(), ElementsAre(101, 201));
        EXPECT_THAT(table->values(), ElementsAre(102, 202));
        EXPECT_EQ(refusal([&] { table->number(3, 0); }), 9);
        EXPECT_EQ(refusal([&] { table->cell(-1, 0); }), 9);
    };
    expectTable(numbers<double>(VT_R8, 3, 4));
    expectTable(numbers<std::int32_t>(VT_I4, 3, 4, -5, 9));

    // By reference: what the table shows stays when the owner's goes.
    auto owned = std::make_unique<Variant>(numbers<double>(VT_R8, 3, 4));
    const RecordTablePtr table = tableOf(referenceTo(*owned, VT_ARRAY | VT_R8));
    owned.reset();
    EXPECT_EQ(table->number(2, 3), 203);

    // Lists too.
    Variant words = list(VT_BSTR, 2, 7);
    for (LONG place : {7, 8})
        check(SafeArrayPutElement(words.get().parray, &place, Bstr(place == 7 ? "A" : "B").get()));
    EXPECT_THAT(textsOf(referenceTo(words, VT_ARRAY | VT_BSTR).get()), ElementsAre("A", "B"));
    Variant column = numbers<double>(VT_R8, 2, 1, 7, -3);
    EXPECT_THAT(firstColumnOf(referenceTo(column).get()), ElementsAre("0", "100"));
    EXPECT_THAT(int32sOf(list(VT_I4, 2, 7).get()), ElementsAre(0, 0));
}

TEST(ToolValues, CellsOfAnyKindAreNumbersTextsOrNothing) {
    const CellTable row({{8.5, "8,5", std::string(), "7", std::monostate()}});
    const RecordTablePtr table = tableOf(tableValue(&row));
    ASSERT_TRUE(table);
    for (int column = 0; column <= row.upperColumn(); ++column)
        EXPECT_EQ(table->cell(0, column), row.cell(0, column)) << column;
    EXPECT_EQ(table->number(0, 3), 7);
    EXPECT_EQ(refusal([&] { table->number(0, 1); }), 13);
    EXPECT_EQ(refusal([&] { table->number(0, 4); }), 13);

    VARIANT money{};
    money.vt = VT_CY;
    money.cyVal.int64 = 12500;
    EXPECT_EQ(cellNumber(cellOf(money)), 1.25);
    VARIANT object{};
    object.vt = VT_DISPATCH;
    EXPECT_TRUE(isNothing(object));
    VARIANT nowhere{};
    nowhere.vt = VT_BYREF | VT_I4;
    EXPECT_THROW(cellOf(nowhere), Failure);
}

TEST(ToolValues, NothingIsEmptyNullAndArraysWithoutElements) {
    std::vector<Variant> nothings(2);
    nothings.back().get().vt = VT_NULL;
    nothings.push_back(list(VT_VARIANT, 0));
    nothings.push_back(numbers<double>(VT_R8, 0, 54));
    nothings.push_back(Variant::ofArray(VT_BSTR, nullptr));
    nothings.emplace_back(static_cast<IDispatch*>(nullptr));
    for (Variant& nothing : nothings) {
        EXPECT_THAT(textsOf(nothing.get()), IsEmpty());
        EXPECT_THAT(int32sOf(nothing.get()), IsEmpty());
        EXPECT_THAT(firstColumnOf(nothing.get()), IsEmpty());
        EXPECT_EQ(tableOf(std::move(nothing)), nullptr);
    }
    EXPECT_EQ(tableValue(nullptr).get().vt, VT_EMPTY);
    EXPECT_EQ(columnValue({}).get().vt, VT_EMPTY);
}

TEST(ToolValues, WrongShapesAreRefused) {
    EXPECT_EQ(refusal([] { tableOf(list(VT_R8, 54)); }), 9);
    EXPECT_EQ(refusal([] { tableOf(Variant(3.0)); }), 13);
    EXPECT_EQ(refusal([] { textsOf(numbers<double>(VT_R8, 2, 2).get()); }), 9);
    EXPECT_EQ(refusal([] { textsOf(Variant(Bstr("Arial")).get()); }), 13);
    EXPECT_EQ(refusal([] { firstColumnOf(list(VT_BSTR, 3).get()); }), 9);
    SAFEARRAYBOUND cube[] = {{2, 0}, {2, 0}, {2, 0}};
    EXPECT_EQ(refusal([&] { tableOf(Variant::ofArray(VT_R8, SafeArrayCreate(VT_R8, 3, cube))); }), 9);

    // An array that is not what its label says.
    Variant mislabelled = numbers<std::int16_t>(VT_I2, 2, 2);
    mislabelled.get().vt = VT_ARRAY | VT_VARIANT;
    EXPECT_EQ(refusal([&] { ArrayView(mislabelled.get(), 2); }), 13);

    const std::vector<std::string> words = {"1", "two"};
    EXPECT_EQ(refusal([&] { int32sOf(listValue(words, Elements::Variants).get()); }), 13);
    const std::vector<std::int32_t> large = {70000};
    EXPECT_EQ(refusal([&] { int16sOf(listValue(large, Elements::Typed).get()); }), 6);
}

}  // namespace
}  // namespace dravik::test
