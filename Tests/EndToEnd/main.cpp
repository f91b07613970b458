#include <cstdio>
#include <optional>
#include <string>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tallyfold/TallyfoldApp.h"
#include "Tests/EndToEnd/MainJob.h"
#include "Tests/EndToEnd/ServiceChild.h"
#include "Tests/EndToEnd/StoryTeller.h"

namespace {

struct Options {
    std::string service;
    std::string database;
    std::string listen = "127.0.0.1:0";
    std::string screens;
};

void describe(CLI::App& command, Options& options)
{
    command.add_option("--service", options.service, "The program tallyfold-service")->required();
    command.add_option("--database", options.database, "The file of the books; a new one that is removed by default");
    command.add_option("--listen", options.listen, "Where the service listens; port 0 picks a free one")
        ->capture_default_str();
    command.add_option("--screens", options.screens, "Folder for the pictures")->required();
}

int tell(const Options& options)
{
    const QTemporaryDir temporary;
    const auto file = options.database.empty() ? temporary.filePath(QStringLiteral("books.sqlite"))
                                               : QString::fromStdString(options.database);
    ServiceChild service{QString::fromStdString(options.service), file, QString::fromStdString(options.listen)};
    StoryTeller teller{QDir{QString::fromStdString(options.screens)}};
    TallyfoldApp tallyfold{"en-US"};
    try {
        expect(service.start(), QStringLiteral("the ledger service starts"));
        tallyfold.start();
        tallyfold.window().activateWindow(); // nobody else does where no window manager runs
        expect(QTest::qWaitForWindowActive(&tallyfold.window()), QStringLiteral("the window is active"));
        MainJob{teller, service, file, tallyfold.window()}.run();
        expect(service.stop(), QStringLiteral("the ledger service ends cleanly when asked to"));
    } catch (const StoryFailure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        teller.picture(QStringLiteral("failure"));
        return 1;
    }
    std::printf("Done: %d pictures in %s, books in %s\n", teller.steps(), options.screens.c_str(), qPrintable(file));
    return 0;
}

}

int main(int argc, char** argv)
{
    CLI::App command{"Does the main job through the real window against the real service, step by step."};
    Options options;
    describe(command, options);
    CLI11_PARSE(command, argc, argv);

    QApplication application{argc, argv};
    QApplication::setApplicationName(QStringLiteral("Tallyfold"));
    Theme::current().followDesktop();
    return tell(options);
}
