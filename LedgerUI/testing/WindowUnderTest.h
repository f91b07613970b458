#pragma once

#include <string>

#include <QMainWindow>
#include <QTest>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Root/RootView.h"
#include "LedgerUI/Screens/Workspace/PageRegistry.h"
#include "LedgerUI/testing/ScreenDriver.h"

/// The whole window over a store with a scripted service, in English until told otherwise.
struct WindowUnderTest : StoreUnderTest {
    explicit WindowUnderTest(const PageRegistry& registry = {}, QSize size = {1160, 760}) : pages{registry}
    {
        store.setAppLanguage("en-US");
        window.setCentralWidget(new RootView(store, pages));
        window.resize(size);
        window.show();
        activate();
        waitUntil([this] { return !store.isBusy(); });
    }

    /// Signs in and waits until the first page stands.
    void signIn(const SnapshotBuilder& books)
    {
        StoreUnderTest::signIn(books);
        settle();
    }

    /// Gives the window back the activation that a closed dialog leaves with nobody.
    void activate()
    {
        window.activateWindow();
        waitUntil([this] { return window.isActiveWindow(); });
    }

    /// Changes the language as a person does, and waits until the texts have followed.
    void speak(const std::string& tag)
    {
        store.setAppLanguage(tag);
        settle();
    }

    void openDemonstration(const SnapshotBuilder& books)
    {
        server.replace("POST v1/demo", ServerReply::json(books.signInJson()));
        server.replace("GET v1/snapshot", ServerReply::json(books.json()));
        require(resultOf(store.startDemo("en-US", "owner")).has_value(), "the scripted demonstration opens");
        settle();
    }

    PageRegistry pages;
    QMainWindow window;
    ScreenDriver screen;
};
