#pragma once
#include <QPointer>
#include <QWidget>

#include "ui/Prompter.h"

namespace tavlo {

// Real message boxes, input boxes, file dialogs and the program's small
// dialogs, parented to the main window.
class QtPrompter : public Prompter {
public:
    void setParent(QWidget* parent) { parent_ = parent; }

    MessageAnswer message(const std::string& title, const std::string& text, MessageButtons buttons) override;
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override;
    std::optional<std::string> openFile(const FileRequest& request) override;
    std::optional<std::string> saveFile(const FileRequest& request) override;
    ChoiceAnswer choose(const ChoiceRequest& request) override;

private:
    QPointer<QWidget> parent_;
};

// "Sysex Files (*.syx)|*.syx|All Files (*.*)|*.*" to Qt's ";;" form.
QString QtFileFilter(const std::string& filter);

}  // namespace tavlo
