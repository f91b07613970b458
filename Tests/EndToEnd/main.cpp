#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerCore/Client/testing/PrivateKeyring.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tallyfold/TallyfoldApp.h"
#include "Tests/EndToEnd/Stage/Typist.h"
#include "Tests/EndToEnd/Story.h"

namespace {

struct Options {
    std::string service;
    std::string screens;
    std::string reader;
    std::string typist;
    Typist::Order typed;
    bool hasKeyring = false;
    std::vector<std::string> chosen;
};

void describe(CLI::App& command, Options& options)
{
    std::vector<std::string> names;
    for (const auto& story : stories())
        names.emplace_back(story.name);
    command.add_option("--service", options.service, "The program tallyfold-service")->required();
    command.add_option("--screens", options.screens, "Folder for the pictures")->required();
    command.add_option("--reader", options.reader,
                       "A program that says at each picture what is wrong with it for somebody who cannot see it");
    command.add_option("--typist", options.typist,
                       "Type an entry at the service of this address and wait for the end; for the stories themselves");
    command.add_option("--typed-note", options.typed.note, "The note of that entry");
    command.add_flag("--typed-and-sent", options.typed.isSent, "Send it, too");
    command.add_flag("--keyring", options.hasKeyring, "Keep sessions in a keyring that is made for the stories");
    command.add_option("stories", options.chosen, "Which stories to tell; all by default")->check(CLI::IsMember(names));
}

void tell(const Story& story, StoryTeller& teller, ServiceChild& service, const QString& database,
          PrivateKeyring* keyring)
{
    constexpr std::chrono::seconds patience{30};
    expect(keyring || !story.needsKeyring, QStringLiteral("the story has a keyring to tell of"));
    if (keyring)
        keyring->unlock();
    teller.begin(qString(story.title));
    ScreenDriver screen{patience};
    TallyfoldApp tallyfold{{.language = "en-US", .credentials = std::make_unique<SessionMemory>()}};
    tallyfold.start();
    tallyfold.window().resize(1160, 760); // also where the display says that it is smaller
    tallyfold.window().activateWindow();  // nobody else does where no window manager runs
    expect(QTest::qWaitForWindowActive(&tallyfold.window()), QStringLiteral("the window is active"));
    Stage stage{.teller = teller,
                .screen = screen,
                .service = service,
                .books = BooksOnDisk{database},
                .mail = Mailbox{database + QStringLiteral(".mail")},
                .window = tallyfold.window(),
                .keyring = keyring};
    try {
        story.tell(stage);
    } catch (const ScreenFailure&) {
        teller.pictureOfFailure();
        throw;
    }
}

bool isTold(const Story& story, const Options& options)
{
    if (options.chosen.empty())
        return options.hasKeyring || !story.needsKeyring;
    return std::ranges::find(options.chosen, story.name) != options.chosen.end();
}

// Each on a service and on books of its own: what one story leaves behind is in no other's way.
int tellAll(const Options& options)
{
    const QTemporaryDir temporary;
    StoryTeller teller{QDir{QString::fromStdString(options.screens)}};
    try {
        if (!options.reader.empty())
            teller.readBy(QString::fromStdString(options.reader));
        auto* const keyring = options.hasKeyring ? &PrivateKeyring::shared() : nullptr;
        for (const auto& story : stories()) {
            if (!isTold(story, options))
                continue;
            const auto books = temporary.filePath(qString(story.name) + QStringLiteral(".sqlite"));
            ServiceChild service{QString::fromStdString(options.service), books};
            expect(service.start(), QStringLiteral("the ledger service starts"));
            tell(story, teller, service, books, keyring);
            expect(service.stop(), QStringLiteral("the ledger service ends cleanly when asked to"));
        }
    } catch (const ScreenFailure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    std::printf("Done: %d pictures in %s\n", teller.steps(), options.screens.c_str());
    return 0;
}
}

int main(int argc, char** argv)
{
    CLI::App command{"Tells how people use the program, through its real window and against the real service."};
    Options options;
    describe(command, options);
    CLI11_PARSE(command, argc, argv);

    QApplication application{argc, argv};
    QApplication::setApplicationName(QStringLiteral("Tallyfold"));
    QApplication::setQuitOnLastWindowClosed(false); // people close their windows and open them again
    if (options.hasKeyring)
        std::ignore = PrivateKeyring::shared(); // before anything asks for the bus of the desktop
    Theme::current().followDesktop();
    return options.typist.empty() ? tellAll(options) : Typist::work(options.typist, options.typed);
}
