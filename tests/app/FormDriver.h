#pragma once
// Works a window's widgets by object name, as a user would: find, pick from
// a list, type and press Return, click, and act inside a modal window once
// it is open.
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>
#include <QtTest>
#include <functional>

namespace tavlo::testing {

template <typename T>
T* Find(QWidget* root, const char* name) {
    T* widget = root->findChild<T*>(name);
    if (!widget) qFatal("no widget %s", name);
    return widget;
}

inline void Choose(QWidget* root, const char* combo, int index) {
    auto* list = Find<QComboBox>(root, combo);
    list->setCurrentIndex(index);
    emit list->activated(index);
}

inline void Type(QWidget* root, const char* lineEdit, const QString& text) {
    auto* edit = Find<QLineEdit>(root, lineEdit);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

inline void Click(QWidget* root, const char* name) { QTest::mouseClick(Find<QWidget>(root, name), Qt::LeftButton); }

// The same, as members of a test that drives one window, `root`.
struct FormDriver {
    QWidget* root = nullptr;
    template <typename T>
    T* w(const char* name) const { return Find<T>(root, name); }
    void choose(const char* combo, int index) const { Choose(root, combo, index); }
    void type(const char* lineEdit, const QString& text) const { Type(root, lineEdit, text); }
    void click(const char* name) const { Click(root, name); }
};

// Runs `steps` on the modal window that the next call opens.
inline void WhenModalOpens(QObject* context, std::function<void(QDialog*)> steps) {
    QTimer::singleShot(0, context, [steps] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        steps(dialog);
    });
}

}  // namespace tavlo::testing
