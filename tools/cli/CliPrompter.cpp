#include "CliPrompter.h"

#include <ostream>

#include "base/Windows1252.h"

namespace tavlo::cli {

UnansweredQuestion CliPrompter::unanswered(const std::string& key, const std::string& title,
                                           const std::string& text) const {
    const auto hint = hints_.find(key);
    return UnansweredQuestion(Windows1252ToUtf8(title), Windows1252ToUtf8(text),
                              hint == hints_.end() ? std::string() : hint->second);
}

MessageAnswer CliPrompter::message(const std::string& title, const std::string& text, MessageButtons buttons) {
    const auto it = messages_.find(title);
    if (it != messages_.end()) return it->second;
    if (buttons == MessageButtons::OK) {
        err_ << Windows1252ToUtf8(title) << ": " << Windows1252ToUtf8(text) << "\n";
        shown_.push_back(title);
        return MessageAnswer::OK;
    }
    throw unanswered(title, title, text);
}

std::optional<std::string> CliPrompter::input(const std::string& title, const std::string& prompt,
                                              const std::string&) {
    const auto it = inputs_.find(title);
    if (it == inputs_.end()) throw unanswered(title, title, prompt);
    std::string answer = it->second;
    inputs_.erase(it);  // an input box asked again is a refused answer
    return answer;
}

std::optional<std::string> CliPrompter::openFile(const FileRequest& request) {
    if (!file_) throw unanswered(request.title, request.title, request.filter);
    return file_;
}

std::optional<std::string> CliPrompter::saveFile(const FileRequest& request) {
    if (!file_) throw unanswered(request.title, request.title, request.fileName);
    return file_;
}

ChoiceAnswer CliPrompter::choose(const ChoiceRequest& request) {
    const auto it = choices_.find(request.dialogName);
    // Asked by its title: the window's own name means nothing on a command line.
    if (it == choices_.end()) throw unanswered(request.dialogName, request.title, request.text);
    ChoiceAnswer answer = it->second;
    choices_.erase(it);
    return answer;
}

}  // namespace tavlo::cli
