#pragma once
#include <iosfwd>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "ui/Prompter.h"

namespace tavlo::cli {

// A question of a flow that the command's options did not answer. The flow
// ends there; its transaction leaves the pool as it was. `options` names
// what answers it on the command line, when an option does.
class UnansweredQuestion : public std::runtime_error {
public:
    UnansweredQuestion(const std::string& title, const std::string& text, const std::string& options)
        : std::runtime_error("question not answered: " + title + ": " + text +
                             (options.empty() ? "" : " (answer it with " + options + ")")) {}
};

// The flows' questions answered from the command line: each answer is
// registered under the title (or dialogue name) of the question it answers.
// A message with only an OK button is a refusal or a notice: it is written
// to the error stream and remembered. Anything else unanswered throws.
class CliPrompter : public Prompter {
public:
    explicit CliPrompter(std::ostream& err) : err_(err) {}

    void answerMessage(const std::string& title, MessageAnswer answer) { messages_[title] = answer; }
    void answerInput(const std::string& title, std::string text) { inputs_[title] = std::move(text); }
    // The program's own dialogues answer once: a second showing means the
    // answer was refused, and asking again would loop.
    void answerChoice(const std::string& dialogName, ChoiceAnswer answer) { choices_[dialogName] = std::move(answer); }
    void answerFile(std::string path) { file_ = std::move(path); }
    // The options that answer a question (by title or dialogue name), named
    // when it is asked without an answer.
    void answeredBy(const std::string& titleOrDialog, std::string options) { hints_[titleOrDialog] = std::move(options); }

    // A refusal or notice was shown.
    bool refused() const { return !shown_.empty(); }
    // Titles of the refusals and notices shown, in order.
    const std::vector<std::string>& shown() const { return shown_; }

    MessageAnswer message(const std::string& title, const std::string& text, MessageButtons buttons) override;
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override;
    std::optional<std::string> openFile(const FileRequest& request) override;
    std::optional<std::string> saveFile(const FileRequest& request) override;
    ChoiceAnswer choose(const ChoiceRequest& request) override;

private:
    std::ostream& err_;
    std::map<std::string, MessageAnswer> messages_;
    std::map<std::string, std::string> inputs_;
    std::map<std::string, ChoiceAnswer> choices_;
    std::optional<std::string> file_;
    std::vector<std::string> shown_;
    std::map<std::string, std::string> hints_;

    UnansweredQuestion unanswered(const std::string& key, const std::string& title, const std::string& text) const;
};

}  // namespace tavlo::cli
