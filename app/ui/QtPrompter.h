#pragma once
#include <QFileDialog>
#include <QFileIconProvider>
#include <QPointer>
#include <QWidget>

#include <memory>

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

    // The dialog openFile and saveFile show: in the folder last used, else
    // the user's documents, never the folder the program happens to run in.
    std::unique_ptr<QFileDialog> fileDialog(const FileRequest& request, QFileDialog::AcceptMode mode);

private:
    std::optional<std::string> runFileDialog(const FileRequest& request, QFileDialog::AcceptMode mode);

    // Icons and kinds from the name alone: guessing a kind from the content
    // opens the file, and an open and close of a pool file anywhere in this
    // process would drop SQLite's own locks on it.
    class NameOnlyIcons : public QFileIconProvider {
    public:
        QIcon icon(const QFileInfo& info) const override;
        QString type(const QFileInfo& info) const override;
        using QFileIconProvider::icon;
    };

    QPointer<QWidget> parent_;
    NameOnlyIcons icons_;
    QString lastFolder_;
};

// "Sysex Files (*.syx)|*.syx|All Files (*.*)|*.*" to Qt's ";;" form.
QString QtFileFilter(const std::string& filter);

}  // namespace tavlo
