#include "ui/QtPrompter.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "ui/QtText.h"

namespace tavlo {
namespace {

// A dialogue that only its buttons end: Esc and the close box are refused.
class ButtonsOnlyDialog : public QDialog {
public:
    ButtonsOnlyDialog(QWidget* parent, bool closable) : QDialog(parent), closable_(closable) {}
    void done(int result) override {
        if (closable_ || finishing_) QDialog::done(result);
    }
    void finish() {
        finishing_ = true;
        accept();
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        if (closable_ || finishing_) QDialog::closeEvent(event);
        else event->ignore();
    }

private:
    bool closable_;
    bool finishing_ = false;
};

}  // namespace

QString QtFileFilter(const std::string& filter) {
    const QStringList parts = toQt(filter).split('|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) filters << parts[i];
    if (filters.isEmpty() && !parts.isEmpty()) filters << parts[0];
    return filters.join(";;");
}

MessageAnswer QtPrompter::message(const std::string& title, const std::string& text, MessageButtons buttons) {
    QMessageBox box(parent_);
    box.setObjectName("MessageBox");
    box.setWindowTitle(toQt(title));
    box.setText(toQt(text));
    switch (buttons) {
        case MessageButtons::OK:
            box.setIcon(QMessageBox::Information);
            box.setStandardButtons(QMessageBox::Ok);
            break;
        case MessageButtons::OKCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
        case MessageButtons::YesNo:
            box.setIcon(QMessageBox::Question);
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            break;
        case MessageButtons::YesNoCancel:
            box.setIcon(QMessageBox::Question);
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            break;
    }
    switch (box.exec()) {
        case QMessageBox::Yes: return MessageAnswer::Yes;
        case QMessageBox::No: return MessageAnswer::No;
        case QMessageBox::Ok: return MessageAnswer::OK;
        default: return MessageAnswer::Cancel;
    }
}

std::optional<std::string> QtPrompter::input(const std::string& title, const std::string& prompt,
                                             const std::string& defaultText) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(parent_, toQt(title), toQt(prompt), QLineEdit::Normal, toQt(defaultText), &ok);
    if (!ok) return std::nullopt;
    return fromQt(text);
}

QIcon QtPrompter::NameOnlyIcons::icon(const QFileInfo& info) const {
    return QFileIconProvider::icon(info.isDir() ? QFileIconProvider::Folder : QFileIconProvider::File);
}

QString QtPrompter::NameOnlyIcons::type(const QFileInfo& info) const {
    if (info.isDir()) return QStringLiteral("Folder");
    return info.suffix().isEmpty() ? QStringLiteral("File") : info.suffix() + QStringLiteral(" File");
}

std::unique_ptr<QFileDialog> QtPrompter::fileDialog(const FileRequest& request, QFileDialog::AcceptMode mode) {
    QString folder = lastFolder_;
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        if (folder.isEmpty() || !QFileInfo(folder).isDir()) folder = QDir::homePath();
    }
    const QString proposed = toQt(request.fileName);
    QString start = folder;
    if (!proposed.isEmpty()) start = QDir::isAbsolutePath(proposed) ? proposed : QDir(folder).filePath(proposed);

    auto dialog = std::make_unique<QFileDialog>(parent_, toQt(request.title), QString(), QtFileFilter(request.filter));
    // Qt's own dialog: a platform dialog may open the files it lists.
    dialog->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontUseCustomDirectoryIcons |
                       QFileDialog::DontResolveSymlinks);
    dialog->setIconProvider(&icons_);
    dialog->setAcceptMode(mode);
    if (mode == QFileDialog::AcceptOpen) dialog->setFileMode(QFileDialog::ExistingFile);
    QString suffix = toQt(request.defaultExtension);
    if (suffix.startsWith('.')) suffix.remove(0, 1);
    dialog->setDefaultSuffix(suffix);
    if (QFileInfo(start).isDir()) {
        dialog->setDirectory(start);
    } else {
        dialog->setDirectory(QFileInfo(start).absolutePath());
        dialog->selectFile(QFileInfo(start).fileName());
    }
    return dialog;
}

std::optional<std::string> QtPrompter::runFileDialog(const FileRequest& request, QFileDialog::AcceptMode mode) {
    const std::unique_ptr<QFileDialog> dialog = fileDialog(request, mode);
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return std::nullopt;
    const QString path = dialog->selectedFiles().first();
    lastFolder_ = QFileInfo(path).absolutePath();
    return path.toStdString();  // file names stay in the system's own encoding
}

std::optional<std::string> QtPrompter::openFile(const FileRequest& request) {
    return runFileDialog(request, QFileDialog::AcceptOpen);
}

std::optional<std::string> QtPrompter::saveFile(const FileRequest& request) {
    return runFileDialog(request, QFileDialog::AcceptSave);
}

namespace {

// The widgets of one ChoiceRequest, built into a ButtonsOnlyDialog, and the
// answer read back from them once the dialog has closed.
class ChoiceDialog {
public:
    ChoiceDialog(QWidget* parent, const ChoiceRequest& request) : dialog_(parent, request.closable) {
        dialog_.setObjectName(QString::fromStdString(request.dialogName));
        dialog_.setWindowTitle(toQt(request.title));
        layout_ = new QVBoxLayout(&dialog_);
        if (!request.text.empty()) {
            auto* label = new QLabel(toQt(request.text));
            label->setWordWrap(true);
            layout_->addWidget(label);
        }
        addOptions(request);
        addLists(request);
        addFields(request);
        follow();
        QObject::connect(options_, &QButtonGroup::idClicked, &dialog_, [this] { follow(); });
        addChecks(request);
        addButtons(request);
    }

    ChoiceAnswer run() {
        dialog_.exec();
        ChoiceAnswer answer;
        answer.button = chosen_;
        for (QCheckBox* box : checks_) answer.checks.push_back(box->isChecked());
        answer.option = options_->checkedId();
        for (QListWidget* list : lists_)
            answer.lists.push_back(list->currentItem() && list->currentItem()->isSelected() ? list->currentRow() : -1);
        for (QLineEdit* edit : fields_) answer.fields.push_back(fromQt(edit->text()));
        return answer;
    }

private:
    void press(int button) {
        chosen_ = button;
        dialog_.finish();
    }

    // Parts that follow the chosen option are switched whenever it changes.
    void follow() {
        for (const auto& [widget, option] : followers_) widget->setEnabled(options_->checkedId() == option);
    }

    void addOptions(const ChoiceRequest& request) {
        options_ = new QButtonGroup(&dialog_);
        for (std::size_t i = 0; i < request.options.size(); ++i) {
            auto* radio = new QRadioButton(toQt(request.options[i]));
            radio->setObjectName(QStringLiteral("Option_%1").arg(i));
            radio->setChecked(static_cast<int>(i) == request.option);
            options_->addButton(radio, static_cast<int>(i));
            layout_->addWidget(radio);
        }
    }

    void addLists(const ChoiceRequest& request) {
        if (request.lists.empty()) return;
        auto* row = new QHBoxLayout;
        for (const auto& spec : request.lists) {
            auto* column = new QVBoxLayout;
            if (!spec.label.empty()) column->addWidget(new QLabel(toQt(spec.label)));
            auto* list = new QListWidget;
            list->setObjectName(QString::fromStdString(spec.objectName));
            for (const std::string& item : spec.items) list->addItem(toQt(item));
            list->setCurrentRow(spec.index);
            if (spec.doubleClickButton >= 0)
                QObject::connect(list, &QListWidget::itemDoubleClicked, &dialog_,
                                 [this, button = spec.doubleClickButton] { press(button); });
            column->addWidget(list);
            row->addLayout(column);
            lists_.push_back(list);
            if (spec.enabledByOption >= 0) followers_.emplace_back(list, spec.enabledByOption);
        }
        layout_->addLayout(row);
    }

    void addFields(const ChoiceRequest& request) {
        if (request.fields.empty()) return;
        auto* form = new QFormLayout;
        for (const auto& field : request.fields) {
            auto* edit = new QLineEdit(toQt(field.text));
            edit->setObjectName(QString::fromStdString(field.objectName));
            form->addRow(toQt(field.label), edit);
            fields_.push_back(edit);
            if (field.enabledByOption >= 0) followers_.emplace_back(edit, field.enabledByOption);
        }
        layout_->addLayout(form);
    }

    void addChecks(const ChoiceRequest& request) {
        for (const auto& check : request.checks) {
            auto* box = new QCheckBox(toQt(check.caption));
            box->setObjectName(QString::fromStdString(check.objectName));
            box->setChecked(check.checked);
            box->setEnabled(check.enabled);
            layout_->addWidget(box);
            checks_.push_back(box);
        }
    }

    void addButtons(const ChoiceRequest& request) {
        auto* row = new QHBoxLayout;
        row->addStretch();
        for (std::size_t i = 0; i < request.buttons.size(); ++i) {
            const auto& spec = request.buttons[i];
            auto* button = new QPushButton(toQt(spec.caption));
            button->setObjectName(QString::fromStdString(spec.objectName));
            button->setEnabled(spec.enabled);
            button->setAutoDefault(false);
            QObject::connect(button, &QPushButton::clicked, &dialog_, [this, i] { press(static_cast<int>(i)); });
            row->addWidget(button);
        }
        layout_->addLayout(row);
    }

    ButtonsOnlyDialog dialog_;
    QVBoxLayout* layout_ = nullptr;
    QButtonGroup* options_ = nullptr;
    std::vector<QListWidget*> lists_;
    std::vector<QLineEdit*> fields_;
    std::vector<QCheckBox*> checks_;
    std::vector<std::pair<QWidget*, int>> followers_;
    int chosen_ = -1;
};

}  // namespace

ChoiceAnswer QtPrompter::choose(const ChoiceRequest& request) { return ChoiceDialog(parent_, request).run(); }

}  // namespace tavlo
