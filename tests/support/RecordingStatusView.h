#pragma once
#include <string>
#include <vector>

#include "ui/StatusView.h"

namespace tavlo::testing {

class RecordingStatusView : public StatusView {
public:
    void show(const std::string& caption, const std::string& line, bool cancelVisible) override {
        this->caption = caption;
        this->line = line;
        this->cancelVisible = cancelVisible;
        visible = true;
        lines.push_back(line);
    }
    void setLine(const std::string& text) override {
        line = text;
        lines.push_back(text);
    }
    void hide() override { visible = false; }
    bool cancelled() const override { return cancelledFlag; }
    void resetCancelled() override { cancelledFlag = false; }

    std::string caption;
    std::string line;
    std::vector<std::string> lines;
    bool cancelVisible = false;
    bool visible = false;
    bool cancelledFlag = false;
};

}  // namespace tavlo::testing
