#pragma once
#include <iosfwd>

#include "ui/Prompter.h"
#include "ui/StatusView.h"

namespace tavlo {

// The prompter of programs without windows (tavlo-cli, tavlo-vdevice,
// benchmarks): every message is written to a stream, if one is given, as
// "Title: text"; questions get one fixed answer; nothing can be typed or
// chosen, so input, files and choices come back cancelled.
class StreamPrompter : public Prompter {
public:
    explicit StreamPrompter(std::ostream* out = nullptr, MessageAnswer questions = MessageAnswer::Cancel)
        : out_(out), questions_(questions) {}

    MessageAnswer message(const std::string& title, const std::string& text, MessageButtons buttons) override;
    std::optional<std::string> input(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<std::string> saveFile(const FileRequest&) override { return std::nullopt; }
    ChoiceAnswer choose(const ChoiceRequest&) override { return {}; }

private:
    std::ostream* out_;
    MessageAnswer questions_;
};

// A status window nobody sees and nobody can cancel.
class SilentStatusView : public StatusView {
public:
    void show(const std::string&, const std::string&, bool) override {}
    void setLine(const std::string&) override {}
    void hide() override {}
    bool cancelled() const override { return false; }
    void resetCancelled() override {}
};

}  // namespace tavlo
