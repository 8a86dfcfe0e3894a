#pragma once
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/Prompter.h"

namespace tavlo::testing {

// A Prompter that answers from a script and records everything it was asked.
// A question that nobody scripted fails the test that asked it.
class ScriptedPrompter : public Prompter {
public:
    struct Seen {
        std::string kind;  // "message", "input", "open", "save", "choose"
        std::string title;
        std::string text;
    };

    // Expectations, answered in order. `title` must match exactly.
    ScriptedPrompter& expectMessage(std::string title, MessageAnswer answer = MessageAnswer::OK);
    // Also checks the text.
    ScriptedPrompter& expectMessage(std::string title, std::string text, MessageAnswer answer);
    ScriptedPrompter& expectInput(std::string title, std::optional<std::string> answer);
    ScriptedPrompter& expectOpenFile(std::string title, std::optional<std::string> path);
    ScriptedPrompter& expectSaveFile(std::string title, std::optional<std::string> path);
    ScriptedPrompter& expectChoice(std::string dialogName, std::function<ChoiceAnswer(const ChoiceRequest&)> answer);
    // Any message box with this title, any number of times, answers this.
    ScriptedPrompter& allowMessage(std::string title, MessageAnswer answer = MessageAnswer::OK);

    const std::vector<Seen>& seen() const { return seen_; }
    std::vector<std::string> titles() const;
    bool done() const { return script_.empty(); }

    MessageAnswer message(const std::string& title, const std::string& text, MessageButtons buttons) override;
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override;
    std::optional<std::string> openFile(const FileRequest& request) override;
    std::optional<std::string> saveFile(const FileRequest& request) override;
    ChoiceAnswer choose(const ChoiceRequest& request) override;

private:
    struct Step {
        std::string kind;
        std::string title;
        std::optional<std::string> text;
        MessageAnswer answer = MessageAnswer::OK;
        std::optional<std::string> textAnswer;
        std::function<ChoiceAnswer(const ChoiceRequest&)> choice;
    };
    Step take(const std::string& kind, const std::string& title, const std::string& text);

    std::deque<Step> script_;
    std::vector<std::pair<std::string, MessageAnswer>> allowed_;
    std::vector<Seen> seen_;
};

}  // namespace tavlo::testing
