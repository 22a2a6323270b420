#include "windows/com/ComFontTool.h"

#include <DravikLib.h>

#include <array>

#include "windows/com/Boundary.h"
#include "windows/com/LateBound.h"
#include "windows/com/ToolValues.h"

namespace dravik::com {
namespace {

class ComFontTool final : public tool::FontTool {
  public:
    explicit ComFontTool(ComPtr<IFontTool> tool) : tool_(std::move(tool)) {}

    void LoadFont(const std::string& name) override { call(&IFontTool::LoadFont, Bstr(name).get()); }
    void CreateFont(const std::string& name) override { call(&IFontTool::CreateFont, Bstr(name).get()); }
    void DeleteFont(const std::string& name) override { call(&IFontTool::DeleteFont, Bstr(name).get()); }
    void RenameFont(const std::string& newName, const std::string& existingName) override {
        call(&IFontTool::RenameFont, Bstr(newName).get(), Bstr(existingName).get());
    }
    void DuplicateFont(const std::string& newName, const std::string& existingName) override {
        call(&IFontTool::DuplicateFont, Bstr(newName).get(), Bstr(existingName).get());
    }
    void SetCharacterSet(const tool::CharacterSet& set) override {
        call(&IFontTool::SetCharacterSet, listValue(set, Elements::Typed).get());
    }
    void IncludeSamples(const std::string& expectedText) override {
        call(&IFontTool::IncludeSamples, Bstr(expectedText).get());
    }
    void CommitNewSamples() override { call(&IFontTool::CommitNewSamples); }
    void SetTrainTimeout(std::int32_t seconds) override {
        call(&IFontTool::SetTrainTimeout, static_cast<LONG>(seconds));
    }
    void StartTraining() override { call(&IFontTool::StartTraining); }
    void SaveFont(const std::string& name) override {
        LONG status = 0;
        call(&IFontTool::SaveFont, Bstr(name).get(), &status);
    }
    void RevertFont(const std::string& name) override {
        LONG status = 0;
        call(&IFontTool::RevertFont, Bstr(name).get(), &status);
    }
    std::vector<std::string> GetFontList() override { return textsOf(value(&IFontTool::GetFontList).get()); }
    tool::CharacterSet GetCharacterSet() override {
        return textsOf(value(&IFontTool::GetCharacterSet).get());
    }
    std::int32_t GetTrainTimeout() override { return plain<LONG>(&IFontTool::GetTrainTimeout); }
    bool IsTrainingDone() override {
        return plain<VARIANT_BOOL>(&IFontTool::IsTrainingDone) != VARIANT_FALSE;
    }
    float GetRmsError() override { return plain<float>(&IFontTool::GetRmsError); }
    bool IsTrainingAborted() override {
        return plain<VARIANT_BOOL>(&IFontTool::IsTrainingAborted) != VARIANT_FALSE;
    }
    std::int32_t GetTrainCycles() override { return plain<LONG>(&IFontTool::GetTrainCycles); }
    void StopTraining() override { call(&IFontTool::StopTraining); }
    std::vector<std::string> GetUncommittedSamples() override {
        return firstColumnOf(value(&IFontTool::GetUncommittedSamples).get());
    }
    void DeleteSample(std::int32_t identifier) override {
        call(&IFontTool::DeleteSample, static_cast<LONG>(identifier));
    }
    tool::RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                       std::span<const std::int16_t> fields) override {
        return tableOf(value(&IFontTool::GetSampleData, listValue(selectors, Elements::Typed).get(),
                             listValue(fields, Elements::Typed).get()));
    }

  private:
    template <typename Method, typename... Arguments>
    void call(Method method, Arguments... arguments) {
        check((tool_.get()->*method)(arguments...), tool_.get(), __uuidof(IFontTool));
    }
    template <typename Method, typename... Arguments>
    Variant value(Method method, Arguments... arguments) {
        Variant result;
        call(method, arguments..., result.put());
        return result;
    }
    template <typename T, typename Method>
    T plain(Method method) {
        T result{};
        call(method, &result);
        return result;
    }

    ComPtr<IFontTool> tool_;
};

class LateBoundFontTool final : public tool::FontTool {
  public:
    explicit LateBoundFontTool(LateBound tool) : tool_(std::move(tool)) {}

    void LoadFont(const std::string& name) override { call(L"LoadFont", text(name)); }
    void CreateFont(const std::string& name) override { call(L"CreateFont", text(name)); }
    void DeleteFont(const std::string& name) override { call(L"DeleteFont", text(name)); }
    void RenameFont(const std::string& newName, const std::string& existingName) override {
        call(L"RenameFont", text(newName), text(existingName));
    }
    void DuplicateFont(const std::string& newName, const std::string& existingName) override {
        call(L"DuplicateFont", text(newName), text(existingName));
    }
    void SetCharacterSet(const tool::CharacterSet& set) override {
        call(L"SetCharacterSet", listValue(set, Elements::Variants));
    }
    void IncludeSamples(const std::string& expectedText) override {
        call(L"IncludeSamples", text(expectedText));
    }
    void CommitNewSamples() override { call(L"CommitNewSamples"); }
    void SetTrainTimeout(std::int32_t seconds) override { call(L"SetTrainTimeout", Variant(seconds)); }
    void StartTraining() override { call(L"StartTraining"); }
    void SaveFont(const std::string& name) override { call(L"SaveFont", text(name)); }
    void RevertFont(const std::string& name) override { call(L"RevertFont", text(name)); }
    std::vector<std::string> GetFontList() override { return textsOf(call(L"GetFontList").get()); }
    tool::CharacterSet GetCharacterSet() override { return textsOf(call(L"GetCharacterSet").get()); }
    std::int32_t GetTrainTimeout() override { return int32Of(call(L"GetTrainTimeout").get()); }
    bool IsTrainingDone() override { return truthOf(call(L"IsTrainingDone").get()); }
    float GetRmsError() override { return static_cast<float>(numberOf(call(L"GetRmsError").get())); }
    bool IsTrainingAborted() override { return truthOf(call(L"IsTrainingAborted").get()); }
    std::int32_t GetTrainCycles() override { return int32Of(call(L"GetTrainCycles").get()); }
    void StopTraining() override { call(L"StopTraining"); }
    std::vector<std::string> GetUncommittedSamples() override {
        return firstColumnOf(call(L"GetUncommittedSamples").get());
    }
    void DeleteSample(std::int32_t identifier) override { call(L"DeleteSample", Variant(identifier)); }
    tool::RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                       std::span<const std::int16_t> fields) override {
        return tableOf(call(L"GetSampleData", listValue(selectors, Elements::Variants),
                            listValue(fields, Elements::Variants)));
    }

  private:
    static Variant text(const std::string& value) { return Variant(Bstr(value)); }

    template <typename... Arguments>
    Variant call(const wchar_t* operation, Arguments... arguments) {
        std::array<Variant, sizeof...(Arguments)> values{std::move(arguments)...};
        return tool_.call(operation, values);
    }

    LateBound tool_;
};

}  // namespace

std::unique_ptr<tool::FontTool> fontToolOf(IUnknown* object) {
    if (auto tool = ComPtr<IUnknown>(object).as<IFontTool>())
        return std::make_unique<ComFontTool>(std::move(tool));
    return lateBoundFontToolOf(object);
}

std::unique_ptr<tool::FontTool> lateBoundFontToolOf(IUnknown* object) {
    LateBound tool(object);
    if (!tool.has(L"GetSampleData")) throw Failure(RuntimeError::TypeMismatch);
    return std::make_unique<LateBoundFontTool>(std::move(tool));
}

}  // namespace dravik::com
