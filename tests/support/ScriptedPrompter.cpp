#include "ScriptedPrompter.h"

#include <gtest/gtest.h>

namespace tavlo::testing {

ScriptedPrompter& ScriptedPrompter::expectMessage(std::string title, MessageAnswer answer) {
    script_.push_back({"message", std::move(title), std::nullopt, answer, std::nullopt, nullptr});
    return *this;
}

ScriptedPrompter& ScriptedPrompter::expectMessage(std::string title, std::string text, MessageAnswer answer) {
    script_.push_back({"message", std::move(title), std::move(text), answer, std::nullopt, nullptr});
    return *this;
}

ScriptedPrompter& ScriptedPrompter::expectInput(std::string title, std::optional<std::string> answer) {
    script_.push_back({"input", std::move(title), std::nullopt, MessageAnswer::OK, std::move(answer), nullptr});
    return *this;
}

ScriptedPrompter& ScriptedPrompter::expectOpenFile(std::string title, std::optional<std::string> path) {
    script_.push_back({"open", std::move(title), std::nullopt, MessageAnswer::OK, std::move(path), nullptr});
    return *this;
}

ScriptedPrompter& ScriptedPrompter::expectSaveFile(std::string title, std::optional<std::string> path) {
    script_.push_back({"save", std::move(title), std::nullopt, MessageAnswer::OK, std::move(path), nullptr});
    return *this;
}

ScriptedPrompter& ScriptedPrompter::expectChoice(std::string dialogName,
                                                 std::function<ChoiceAnswer(const ChoiceRequest&)> answer) {
    script_.push_back({"choose", std::move(dialogName), std::nullopt, MessageAnswer::OK, std::nullopt, std::move(answer)});
    return *this;
}

ScriptedPrompter& ScriptedPrompter::allowMessage(std::string title, MessageAnswer answer) {
    allowed_.emplace_back(std::move(title), answer);
    return *this;
}

std::vector<std::string> ScriptedPrompter::titles() const {
    std::vector<std::string> out;
    for (const Seen& s : seen_) out.push_back(s.title);
    return out;
}

ScriptedPrompter::Step ScriptedPrompter::take(const std::string& kind, const std::string& title,
                                              const std::string& text) {
    seen_.push_back({kind, title, text});
    if (!script_.empty() && script_.front().kind == kind && script_.front().title == title) {
        Step step = std::move(script_.front());
        script_.pop_front();
        if (step.text) {
            EXPECT_EQ(*step.text, text) << "text of \"" << title << "\"";
        }
        return step;
    }
    if (kind == "message")
        for (const auto& [allowedTitle, answer] : allowed_)
            if (allowedTitle == title) return {kind, title, std::nullopt, answer, std::nullopt, nullptr};
    ADD_FAILURE() << "unexpected " << kind << " \"" << title << "\": " << text
                  << (script_.empty() ? std::string(" (nothing scripted)")
                                      : " (expected " + script_.front().kind + " \"" + script_.front().title + "\")");
    return {kind, title, std::nullopt, MessageAnswer::Cancel, std::nullopt, nullptr};
}

MessageAnswer ScriptedPrompter::message(const std::string& title, const std::string& text, MessageButtons) {
    return take("message", title, text).answer;
}

std::optional<std::string> ScriptedPrompter::input(const std::string& title, const std::string& prompt,
                                                   const std::string&) {
    return take("input", title, prompt).textAnswer;
}

std::optional<std::string> ScriptedPrompter::openFile(const FileRequest& request) {
    return take("open", request.title, request.filter).textAnswer;
}

std::optional<std::string> ScriptedPrompter::saveFile(const FileRequest& request) {
    return take("save", request.title, request.fileName).textAnswer;
}

ChoiceAnswer ScriptedPrompter::choose(const ChoiceRequest& request) {
    Step step = take("choose", request.dialogName, request.text);
    if (!step.choice) return ChoiceAnswer{};
    return step.choice(request);
}

}  // namespace tavlo::testing
