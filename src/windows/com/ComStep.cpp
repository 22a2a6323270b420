#include "windows/com/ComStep.h"

#include <TollanLib.h>

#include <optional>

#include "windows/com/Boundary.h"
#include "windows/com/ComFontTool.h"
#include "windows/com/FontToolObject.h"
#include "windows/com/LateBound.h"
#include "windows/com/Module.h"

namespace dravik::com {
namespace {

class ComStep final : public tool::Step {
  public:
    explicit ComStep(IUnknown* object) : object_(object), typed_(object_.as<IStep>()) {
        if (!typed_) late_.emplace(object);
    }

    const ComPtr<IUnknown>& object() const { return object_; }

    std::string programIdentifier() override {
        if (!typed_) {
            const Variant value = late_->property(L"ProgId");
            // A script may have made it a function, which reads as an object.
            return textOf(isObject(value.get()) ? late_->call(L"ProgId").get() : value.get());
        }
        Bstr text;
        check(typed_->get_ProgId(text.put()), typed_.get(), __uuidof(IStep));
        return text.utf8();
    }

    double datum(const std::string& name) override {
        Variant value;
        if (typed_) {
            check(typed_->get_Datum(Bstr(name).get(), value.put()), typed_.get(), __uuidof(IStep));
        } else {
            Variant argument{Bstr(name)};
            value = late_->call(L"Datum", {&argument, 1});
        }
        // A datum is a value or an object that has one.
        if (isObject(value.get())) {
            const auto datumObject = objectOf(value.get());
            if (!datumObject) throw Failure(RuntimeError::ObjectNotSet);
            LateBound datum(datumObject.get());
            return numberOf((datum.has(L"Value") ? datum.property(L"Value") : datum.defaultValue()).get());
        }
        return numberOf(value.get());
    }

    tool::FontTool& fontTool() override {
        if (!tool_) tool_ = fontToolOf(object_.get());
        return *tool_;
    }

  private:
    ComPtr<IUnknown> object_;
    ComPtr<IStep> typed_;
    std::optional<LateBound> late_;
    std::unique_ptr<tool::FontTool> tool_;
};

}  // namespace

tool::StepPtr stepFromCom(IUnknown* object) {
    if (!object) return nullptr;
    tool::StepPtr step;
    if (const auto native = ComPtr<IUnknown>(object).as<INativeStep>();
        native && native->nativeStep(thisModule(), step))
        return step;
    return std::make_shared<ComStep>(object);
}

ComPtr<IUnknown> comFromStep(const tool::StepPtr& step) {
    if (!step) return nullptr;
    if (const auto* foreign = dynamic_cast<const ComStep*>(step.get())) return foreign->object();
    return newFontToolObject(step);
}

}  // namespace dravik::com
