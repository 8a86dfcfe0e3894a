#include <QCommandLineParser>

#include "db/PoolDatabase.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"
#include "ui/GuardedApplication.h"
#include "ui/QtPrompter.h"

int main(int argc, char** argv) {
    tavlo::GuardedApplication app(argc, argv);
    QApplication::setApplicationName("Tavlo");

    QCommandLineParser parser;
    parser.setApplicationDescription("Editor and librarian for the PC1600 and PC1600X MIDI command stations");
    parser.addHelpOption();
    QCommandLineOption poolOption("pool", "Use the pool database at PATH instead of your own.", "PATH");
    parser.addOption(poolOption);
    parser.process(app);
    const std::string poolPath =
        parser.isSet(poolOption) ? parser.value(poolOption).toStdString() : tavlo::PoolDatabase::DefaultPath();

    tavlo::QtPrompter prompter;
    app.setPoolPath(poolPath);
    app.setReporter([&prompter](const std::string& title, const std::string& text) {
        prompter.message(title, text, tavlo::MessageButtons::OK);
    });
    tavlo::TavloProgram program(prompter);
    if (!program.start(poolPath)) return 1;
    prompter.setParent(program.controller());
    program.controller()->show();
    return app.exec();
}
