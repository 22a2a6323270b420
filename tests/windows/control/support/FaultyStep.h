// A step around another one that goes wrong as told: an operation fails, or record tables have the wrong
// shape.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/Failure.h"
#include "contract/ForwardedTool.h"
#include "tool/Step.h"

namespace dravik::test {

using namespace tool;

class FaultyStep : public Step, public ForwardedTool {
  public:
    explicit FaultyStep(StepPtr inner) : inner_(std::move(inner)) {}

    std::string failing;   // the operation that fails; "" for none
    bool endless = false;  // a run ends only when it is stopped
    bool stopped = false;
    RecordTablePtr table;  // in the place of every other one
    // Called before every operation.
    std::function<void(const std::string&)> before;

    std::string programIdentifier() override { return kDravikStep; }
    double datum(const std::string& name) override { return inner_->datum(name); }
    FontTool& fontTool() override { return *this; }

    bool IsTrainingDone() override { return ForwardedTool::IsTrainingDone() && !(endless && !stopped); }
    void StopTraining() override {
        stopped = true;
        ForwardedTool::StopTraining();
    }
    RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                 std::span<const std::int16_t> fields) override {
        const auto got = ForwardedTool::GetSampleData(selectors, fields);
        return table ? table : got;
    }

  private:
    FontTool& on(const std::string& operation, const std::string&) override {
        if (before) before(operation);
        if (failing == operation)
            throw Failure(static_cast<std::int32_t>(0x80040123u), operation + " went wrong");
        return inner_->fontTool();
    }

    StepPtr inner_;
};

}  // namespace dravik::test
