#pragma once
#include <QWidget>

#include "ui/Observable.h"

class QLabel;
class QListWidget;

namespace tavlo {

class Program;

// The window on the stored sets of global settings: the list with the
// clicked set's details, and the buttons of the pool of settings.
class GlobalPoolForm : public QWidget {
    Q_OBJECT
public:
    explicit GlobalPoolForm(Program& session, QWidget* parent = nullptr);
    ~GlobalPoolForm() override;

    // GlobalMenu: the list filled anew.
    void reload();
    void refresh();

signals:
    // EditButton loaded a set into GlobalForm.
    void editing();

private:
    Program& session_;
    Observable::Token token_ = 0;
    bool refreshing_ = false;
    QListWidget* list_ = nullptr;
    QLabel* created_ = nullptr;
    QLabel* chIn_ = nullptr;
    QLabel* chOut_ = nullptr;
};

}  // namespace tavlo
