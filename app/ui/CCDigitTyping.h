#pragma once
#include <QObject>
#include <functional>
#include <string>

class QComboBox;

namespace tavlo {

// Digits typed into a controller list pick the controller by number: up to
// three digits, each swallowed, the number clamped to 0..120. The focus
// arriving, or any other key, starts afresh.
class CCDigitTyping : public QObject {
    Q_OBJECT
public:
    CCDigitTyping(QComboBox* combo, std::function<void(int)> pick);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(int)> pick_;
    std::string digits_;
};

}  // namespace tavlo
