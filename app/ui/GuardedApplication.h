#pragma once
#include <QApplication>

#include <functional>
#include <string>

namespace tavlo {

// The application object of the program. No exception crosses from an event
// handler into Qt's event loop (which would end the program): each one is
// caught where Qt hands out the event and told to the user, and the program
// goes on. A pool that is busy, full or no longer writable is named as such.
class GuardedApplication : public QApplication {
public:
    GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {}

    // Shows a failure (title, text); the program's prompter in practice.
    void setReporter(std::function<void(const std::string&, const std::string&)> report) { report_ = std::move(report); }
    void setPoolPath(std::string path) { poolPath_ = std::move(path); }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void report(const std::string& title, const std::string& text);

    std::function<void(const std::string&, const std::string&)> report_;
    std::string poolPath_;
    bool reporting_ = false;
};

}  // namespace tavlo
