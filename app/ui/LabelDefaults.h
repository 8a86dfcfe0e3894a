#pragma once
#include <QObject>
#include <QTimer>
#include <functional>
#include <map>

class QLabel;

namespace tavlo {

// Labels whose double click makes the value of their field the default. It
// is acknowledged by a flash of the label's text: LabelClickTimer puts the
// colours back when it fires.
class LabelDefaults : public QObject {
    Q_OBJECT
public:
    explicit LabelDefaults(QObject* parent);
    void add(QLabel* label, std::function<void()> setDefault);
    QTimer* timer() { return &LabelClickTimer; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();

    QTimer LabelClickTimer;
    std::map<QLabel*, std::function<void()>> actions_;
    std::map<QLabel*, QString> flashing_;
};

}  // namespace tavlo
