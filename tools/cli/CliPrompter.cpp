#include "CliPrompter.h"

#include <ostream>

#include "base/Windows1252.h"

namespace tavlo::cli {

MessageAnswer CliPrompter::message(const std::string& title, const std::string& text, MessageButtons buttons) {
    const auto it = messages_.find(title);
    if (it != messages_.end()) return it->second;
    if (buttons == MessageButtons::OK) {
        err_ << Windows1252ToUtf8(title) << ": " << Windows1252ToUtf8(text) << "\n";
        shown_.push_back(title);
        return MessageAnswer::OK;
    }
    throw UnansweredQuestion(Windows1252ToUtf8(title), Windows1252ToUtf8(text));
}

std::optional<std::string> CliPrompter::input(const std::string& title, const std::string& prompt,
                                              const std::string&) {
    const auto it = inputs_.find(title);
    if (it == inputs_.end()) throw UnansweredQuestion(Windows1252ToUtf8(title), Windows1252ToUtf8(prompt));
    std::string answer = it->second;
    inputs_.erase(it);  // an input box asked again is a refused answer
    return answer;
}

std::optional<std::string> CliPrompter::openFile(const FileRequest& request) {
    if (!file_) throw UnansweredQuestion(request.title, request.filter);
    return file_;
}

std::optional<std::string> CliPrompter::saveFile(const FileRequest& request) {
    if (!file_) throw UnansweredQuestion(request.title, request.fileName);
    return file_;
}

ChoiceAnswer CliPrompter::choose(const ChoiceRequest& request) {
    const auto it = choices_.find(request.dialogName);
    if (it == choices_.end())
        throw UnansweredQuestion(request.dialogName + " (" + Windows1252ToUtf8(request.title) + ")",
                                 Windows1252ToUtf8(request.text));
    ChoiceAnswer answer = it->second;
    choices_.erase(it);
    return answer;
}

}  // namespace tavlo::cli
