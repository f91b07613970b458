#include <memory>
#include <optional>
#include <string>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <QApplication>
#include <fmt/core.h>

#include "LedgerCore/Client/Session/SessionKeychain.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tallyfold/Process.h"
#include "Tallyfold/TallyfoldApp.h"
#include "Tallyfold/WindowCall.h"

namespace {

struct Options {
    std::string language;
    bool measuresStart = false;
    bool opensNewWindow = false;
};

void describe(CLI::App& command, Options& options)
{
    command.set_version_flag("--version", "Tallyfold " TALLYFOLD_VERSION);
    command
        .add_option("--language", options.language, "Interface language of this start: zh-CN, en-US, id-ID or vi-VN")
        ->check(CLI::Validator{[](const std::string& tag) {
                                   return AppLanguage::isSupported(tag) ? std::string{} : "no such language: " + tag;
                               },
                               "TAG"});
    command.add_flag("--new-window", options.opensNewWindow,
                     "Open a window although one is open; otherwise that one comes to the front, and nothing else "
                     "is done");
    command.add_flag("--measure-start", options.measuresStart,
                     "Print the milliseconds from the process's start to the first painted frame, and leave");
}

void printStart()
{
    if (const auto age = processAge())
        fmt::print("first-paint-ms {}\n", age->count());
    else
        fmt::print(stderr, "This system does not tell when a process started.\n");
    QApplication::quit();
}

}

int main(int argc, char** argv)
{
    CLI::App command{"Books of several companies, in every currency they keep."};
    Options options;
    describe(command, options);
    CLI11_PARSE(command, argc, argv);

    giveBackLargeBlocks();
    QApplication application{argc, argv};
    QApplication::setApplicationName(QStringLiteral("Tallyfold"));
    QApplication::setApplicationVersion(QStringLiteral(TALLYFOLD_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("tallyfold"));
    Theme::current().followDesktop();
    QApplication::setWindowIcon(Icon::mark());

    WindowCall call;
    const bool isCalled = !options.opensNewWindow && !options.measuresStart;
    if (isCalled && call.begin() == WindowCall::Standing::second)
        return 0;
    TallyfoldApp tallyfold{{.language = options.language.empty() ? std::optional<std::string>{} : options.language,
                            .credentials = std::make_unique<SessionKeychain>()}};
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, [&tallyfold, &call] {
        call.end();
        tallyfold.leave(&QCoreApplication::quit);
    });
    QObject::connect(&call, &WindowCall::called, &tallyfold.window(), &MainWindow::raiseToFront);
    if (options.measuresStart)
        QObject::connect(&tallyfold.window(), &MainWindow::firstPainted, printStart);
    tallyfold.start();
    return QApplication::exec();
}
