// A font tool that hands every operation on to another one and tells of it before: what fails, and what calls
// led to it, is decided by who derives from it.
#pragma once

#include <string>
#include <vector>

#include "tool/FontTool.h"

namespace dravik {

class ForwardedTool : public tool::FontTool {
  public:
    void LoadFont(const std::string& name) override { on("LoadFont", quoted(name)).LoadFont(name); }
    void CreateFont(const std::string& name) override { on("CreateFont", quoted(name)).CreateFont(name); }
    void DeleteFont(const std::string& name) override { on("DeleteFont", quoted(name)).DeleteFont(name); }
    void RenameFont(const std::string& to, const std::string& from) override {
        on("RenameFont", quoted(to) + ", " + quoted(from)).RenameFont(to, from);
    }
    void DuplicateFont(const std::string& to, const std::string& from) override {
        on("DuplicateFont", quoted(to) + ", " + quoted(from)).DuplicateFont(to, from);
    }
    void SetCharacterSet(const tool::CharacterSet& set) override {
        std::string all;
        for (const std::string& character : set) all += character;
        on("SetCharacterSet", quoted(all)).SetCharacterSet(set);
    }
    void IncludeSamples(const std::string& text) override {
        on("IncludeSamples", quoted(text)).IncludeSamples(text);
    }
    void CommitNewSamples() override { on("CommitNewSamples").CommitNewSamples(); }
    void SetTrainTimeout(std::int32_t seconds) override {
        on("SetTrainTimeout", std::to_string(seconds)).SetTrainTimeout(seconds);
    }
    void StartTraining() override { on("StartTraining").StartTraining(); }
    void SaveFont(const std::string& name) override { on("SaveFont", quoted(name)).SaveFont(name); }
    void RevertFont(const std::string& name) override { on("RevertFont", quoted(name)).RevertFont(name); }
    std::vector<std::string> GetFontList() override { return on("GetFontList").GetFontList(); }
    tool::CharacterSet GetCharacterSet() override { return on("GetCharacterSet").GetCharacterSet(); }
    std::int32_t GetTrainTimeout() override { return on("GetTrainTimeout").GetTrainTimeout(); }
    bool IsTrainingDone() override { return on("IsTrainingDone").IsTrainingDone(); }
    float GetRmsError() override { return on("GetRmsError").GetRmsError(); }
    bool IsTrainingAborted() override { return on("IsTrainingAborted").IsTrainingAborted(); }
    std::int32_t GetTrainCycles() override { return on("GetTrainCycles").GetTrainCycles(); }
    void StopTraining() override { on("StopTraining").StopTraining(); }
    std::vector<std::string> GetUncommittedSamples() override {
        return on("GetUncommittedSamples").GetUncommittedSamples();
    }
    void DeleteSample(std::int32_t identifier) override {
        on("DeleteSample", std::to_string(identifier)).DeleteSample(identifier);
    }
    using FontTool::GetSampleData;
    tool::RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                       std::span<const std::int16_t> fields) override {
        return on("GetSampleData", listed(selectors) + ", " + listed(fields))
            .GetSampleData(selectors, fields);
    }

  protected:
    // Called before each operation; gives the tool that does it.
    virtual FontTool& on(const std::string& operation, const std::string& arguments = {}) = 0;

  private:
    static std::string quoted(const std::string& text) { return '"' + text + '"'; }
    template <class Number>
    static std::string listed(std::span<const Number> numbers) {
        std::string text;
        for (const Number number : numbers) text += (text.empty() ? "" : ", ") + std::to_string(number);
        return '[' + text + ']';
    }
};

}  // namespace dravik
