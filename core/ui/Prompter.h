#pragma once
#include <optional>
#include <string>
#include <vector>

namespace tavlo {

// Buttons of a message box, as the user sees them.
enum class MessageButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MessageAnswer { OK, Cancel, Yes, No };

// A program's own small dialog (clash choice, store kind, print type, spread
// range, scene pick, map to device, ...) described as data: a question with
// push buttons, check boxes, a group of options, pick lists and text fields.
// Callers wrap it in a typed function that checks the answer and asks again
// (with the answer filled in) while it is refused; the toolkit builds one
// dialog for all.
struct ChoiceRequest {
    struct Check {
        std::string objectName;
        std::string caption;
        bool checked = false;
        bool enabled = true;
    };
    struct Button {
        std::string objectName;
        std::string caption;
        bool enabled = true;
    };
    // A part that only the option of this index enables; -1: always enabled.
    struct Field {
        std::string objectName;
        std::string label;
        std::string text;
        int enabledByOption = -1;
    };
    struct PickList {
        std::string objectName;
        std::string label;
        std::vector<std::string> items;
        int index = -1;
        int doubleClickButton = -1;  // a double click on a line presses this button
        int enabledByOption = -1;
    };
    std::string dialogName;  // the window's own name, e.g. "MemImageOrPoolChoiceForm"
    std::string title;
    std::string text;
    std::vector<Button> buttons;
    std::vector<Check> checks;
    std::vector<std::string> options;  // exclusive choices, one of them on
    int option = 0;
    std::vector<PickList> lists;       // side by side
    std::vector<Field> fields;
    // False: only a button ends the dialogue; Esc and the close box do nothing.
    bool closable = true;
};

struct ChoiceAnswer {
    int button = -1;            // index into ChoiceRequest::buttons; -1 = closed
    std::vector<bool> checks;   // one per ChoiceRequest::checks
    int option = -1;
    std::vector<int> lists;     // the chosen line of each list, -1 for none
    std::vector<std::string> fields;
};

struct FileRequest {
    std::string title;
    std::string filter;            // "Sysex Files (*.syx)|*.syx" form
    std::string defaultExtension;  // ".syx"
    std::string fileName;          // proposed name or start folder
};

// Every message box, question, input box and file dialog goes through here.
// Titles and texts are passed exactly as the user is to read them.
class Prompter {
public:
    virtual ~Prompter() = default;
    virtual MessageAnswer message(const std::string& title, const std::string& text,
                                  MessageButtons buttons = MessageButtons::OK) = 0;
    // Returns nothing when the user cancelled.
    virtual std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                             const std::string& defaultText = {}) = 0;
    virtual std::optional<std::string> openFile(const FileRequest& request) = 0;
    virtual std::optional<std::string> saveFile(const FileRequest& request) = 0;
    virtual ChoiceAnswer choose(const ChoiceRequest& request) = 0;
};

}  // namespace tavlo
