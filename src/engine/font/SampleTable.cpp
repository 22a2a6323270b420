#include "engine/font/SampleTable.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/Failure.h"

namespace dravik::engine {
namespace {

enum class Field : std::int16_t { Code = 1, Distance = 2, Height = 3, Trained = 4, Offset = 5, Features = 6 };

// A column: the field that it shows and, of the features, which.
struct Column {
    Field field;
    std::size_t feature = 0;
};

// A stretch of successive records of one kind.
struct Stretch {
    tool::SampleKind kind;
    std::int32_t first;
    std::int32_t count;
    std::int32_t row;  // of its first record, from 0
};

std::vector<Column> columnsOf(std::span<const std::int16_t> fields) {
    std::vector<Column> columns;
    for (const std::int16_t field : fields) {
        if (field < 1 || field > 6)
            throw Failure(RuntimeError::InvalidProcedureCall, "There is no field " + std::to_string(field));
        if (static_cast<Field>(field) != Field::Features) {
            columns.push_back({static_cast<Field>(field)});
            continue;
        }
        for (std::size_t i = 0; i < tool::kFeatureCount; ++i) columns.push_back({Field::Features, i});
    }
    return columns;
}

std::string heading(const Column& column) {
    switch (column.field) {
        case Field::Code:
            return "Code";
        case Field::Distance:
            return "Distance";
        case Field::Height:
            return "Height";
        case Field::Trained:
            return "Trained";
        case Field::Offset:
            return "Offset";
        case Field::Features:
            break;
    }
    return "F" + std::to_string(column.feature + 1);
}

class SampleTable : public tool::RecordTable {
  public:
    SampleTable(std::vector<Column> columns, std::vector<Stretch> stretches,
                std::vector<CharacterRecord> characters, SampleColumnsPtr uncommitted,
                SampleColumnsPtr committed)
        : columns_(std::move(columns)),
          stretches_(std::move(stretches)),
          characters_(std::move(characters)),
          uncommitted_(std::move(uncommitted)),
          committed_(std::move(committed)) {
        if (!stretches_.empty()) rows_ = stretches_.back().row + stretches_.back().count;
    }

    int upperRow() const noexcept override { return rows_; }
    int upperColumn() const noexcept override { return static_cast<int>(columns_.size()); }

    tool::Cell cell(int row, int column) const override {
        if (row != 0) return number(row, column);
        check(row, column);
        return column == 0 ? std::string("Sample") : heading(columns_[static_cast<std::size_t>(column) - 1]);
    }

    double number(int row, int column) const override {
        check(row, column);
        if (row == 0) return tool::RecordTable::number(row, column);
        const auto stretch = std::upper_bound(stretches_.begin(), stretches_.end(), row - 1,
                                              [](int r, const Stretch& s) { return r < s.row; }) -
                             1;
        const std::int32_t place = stretch->first + (row - 1 - stretch->row);
        if (column == 0) return tool::sampleIdentifier(stretch->kind, place);
        const Column& wanted = columns_[static_cast<std::size_t>(column) - 1];
        const auto index = static_cast<std::size_t>(place);
        if (stretch->kind == tool::SampleKind::Trained) return ofCharacter(characters_[index], wanted);
        return ofSample(stretch->kind == tool::SampleKind::Committed ? *committed_ : *uncommitted_, index,
                        wanted);
    }

    std::span<const std::int32_t> codes() const override {
        if (const SampleColumns* whole = wholeColumns(0, Field::Code)) return whole->codes;
        return tool::RecordTable::codes();
    }

    std::span<const double> values() const override {
        if (const SampleColumns* whole = wholeColumns(1, Field::Distance)) return whole->distances;
        return tool::RecordTable::values();
    }

  private:
    void check(int row, int column) const {
        if (row < 0 || row > upperRow() || column < 0 || column > upperColumn())
            throw Failure(RuntimeError::SubscriptOutOfRange);
    }

    // The store's own column when this table shows all samples of a kind and `field` in that place.
    const SampleColumns* wholeColumns(std::size_t place, Field field) const {
        if (stretches_.size() != 1 || columns_.size() <= place || columns_[place].field != field)
            return nullptr;
        const Stretch& only = stretches_.front();
        if (only.kind == tool::SampleKind::Trained) return nullptr;
        const SampleColumns& all = only.kind == tool::SampleKind::Committed ? *committed_ : *uncommitted_;
        return only.first == 0 && static_cast<std::size_t>(only.count) == all.size() ? &all : nullptr;
    }

    static double ofInputs(const SampleInputs& inputs, const Column& column) {
        switch (column.field) {
            case Field::Height:
                return static_cast<double>(inputs[kHeightInput]);
            case Field::Offset:
                return static_cast<double>(inputs[kOffsetInput]);
            default:
                return static_cast<double>(inputs[column.feature]);
        }
    }

    static double ofCharacter(const CharacterRecord& record, const Column& column) {
        switch (column.field) {
            case Field::Code:
                return record.code;
            case Field::Trained:
                return record.trained;
            case Field::Distance:
                return 0;
            default:
                return ofInputs(record.inputs, column);
        }
    }

    double ofSample(const SampleColumns& samples, std::size_t index, const Column& column) const {
        switch (column.field) {
            case Field::Code:
                return samples.codes[index];
            case Field::Distance:
                return samples.distances[index];
            case Field::Trained:
                for (const CharacterRecord& record : characters_)
                    if (record.code == samples.codes[index]) return record.trained;
                return 0;
            default:
                return ofInputs(samples.samples[index]->inputs, column);
        }
    }

    std::vector<Column> columns_;
    std::vector<Stretch> stretches_;
    std::vector<CharacterRecord> characters_;
    SampleColumnsPtr uncommitted_, committed_;
    int rows_ = 0;
};

}  // namespace

tool::RecordTablePtr sampleTable(std::span<const std::int32_t> selectors,
                                 std::span<const std::int16_t> fields,
                                 std::vector<CharacterRecord> characters, SampleColumnsPtr uncommitted,
                                 SampleColumnsPtr committed) {
    std::vector<Column> columns = columnsOf(fields);
    std::vector<Stretch> stretches;
    const auto add = [&stretches](tool::SampleKind kind, std::int32_t first, std::int32_t count) {
        const std::int32_t row = stretches.empty() ? 0 : stretches.back().row + stretches.back().count;
        stretches.push_back({kind, first, count, row});
    };
    for (const std::int32_t selector : selectors) {
        const std::int32_t kind = selector / tool::kKindFactor, place = selector % tool::kKindFactor;
        if (selector < tool::kKindFactor || kind > static_cast<std::int32_t>(tool::SampleKind::Committed))
            continue;
        const tool::SampleKind sampleKind = static_cast<tool::SampleKind>(kind);
        const std::size_t size = sampleKind == tool::SampleKind::Trained       ? characters.size()
                                 : sampleKind == tool::SampleKind::Uncommitted ? uncommitted->size()
                                                                               : committed->size();
        const std::int32_t count = static_cast<std::int32_t>(size);
        if (place == tool::kKindFactor - 1 && count > 0)
            add(sampleKind, 0, count);
        else if (place < count)
            add(sampleKind, place, 1);
    }
    if (stretches.empty()) return nullptr;
    return std::make_shared<SampleTable>(std::move(columns), std::move(stretches), std::move(characters),
                                         std::move(uncommitted), std::move(committed));
}

}  // namespace dravik::engine
