// A job step as the host hands it over, and the interface through which it does so.
#pragma once

#include <memory>
#include <string>

#include "tool/FontTool.h"

namespace dravik::tool {

// The program identifier of the only step that the screen edits.
inline constexpr char kDravikStep[] = "Step.DravikTool.1";
// The datum that holds the selected font: a bit mask over the font list, its lowest set bit being the font's
// index.
inline constexpr char kSelectedFontDatum[] = "SelFont";

class Step {
  public:
    Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step() = default;

    virtual std::string programIdentifier() = 0;
    // The value of a datum of the step; raises Failure when the step has none of that name.
    virtual double datum(const std::string& name) = 0;
    // The step seen as a font tool: the same object. Raises Type mismatch (13) when it is none.
    virtual FontTool& fontTool() = 0;
};

using StepPtr = std::shared_ptr<Step>;

// What the host calls on every custom property page of a step.
class StepEditor {
  public:
    StepEditor() = default;
    StepEditor(const StepEditor&) = delete;
    StepEditor& operator=(const StepEditor&) = delete;
    virtual ~StepEditor() = default;

    virtual void setReadOnly(bool readOnly) = 0;
    virtual bool readOnly() const = 0;
    virtual void setRootStep(StepPtr step) = 0;
    // Binds the step; raises Failure 0x80004005 when it is of another kind, and then changes nothing.
    virtual void setStep(StepPtr step) = 0;
    // The bound tool seen as a step, nothing when none is bound.
    virtual StepPtr step() const = 0;
};

}  // namespace dravik::tool
