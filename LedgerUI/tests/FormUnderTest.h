#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QTest>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Components/Buttons/EnterKey.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/testing/ScreenDriver.h"

inline SnapshotBuilder entryBooks()
{
    auto builder = snapshot();
    builder.account("bank", {"IDR", "USD"}).account("vault", {"USD", "SGD"}).employeeAccount("float", {"IDR"}, "m1");
    builder.grantAll().balance("bank", "IDR", 28'412'045'000).balance("float", "IDR", 536'315'000);
    builder.category("power", "expense", "Electricity").category("rent", "expense", "Rent");
    builder.category("sales", "income", "Sales");
    return builder;
}

/// The form over a window, with hands on its controls.
class FormUnderTest {
public:
    explicit FormUnderTest(std::optional<std::string> account = "bank", std::string kind = "expense",
                           std::string language = "en-US", const SnapshotBuilder& books = entryBooks())
    {
        letEnterPressButtons();
        InterfaceLanguage::change(std::move(language));
        service.signIn(books);
        window.resize(900, 640);
        window.show();
        form = new TransactionForm(service.store, {std::move(kind), std::move(account), {}}, &window);
        form->open();
        form->activateWindow();
        waitUntil([&] { return form->isActiveWindow(); });
    }
    ~FormUnderTest() { InterfaceLanguage::change("en-US"); }

    template <class Widget = QWidget>
    Widget& control(const char* name)
    {
        auto* found = form->findChild<Widget*>(QString::fromLatin1(name));
        require(found != nullptr, name);
        return *found;
    }
    void type(const char* name, const char* keys) { QTest::keyClicks(&control(name), QString::fromUtf8(keys)); }
    void click(const char* name) { control<QAbstractButton>(name).click(); }
    std::string message(const char* name) { return control<FieldError>(name).message().toStdString(); }
    std::string banner()
    {
        const auto& shown = form->banner();
        return shown.isHidden() ? std::string{} : shown.text().toStdString();
    }
    std::string amount() { return control<QLineEdit>("entryAmount").text().toStdString(); }
    std::vector<TransactionInput> posted()
    {
        std::vector<TransactionInput> inputs;
        for (const auto& request : service.server.requests("POST v1/transactions"))
            inputs.push_back(Json::decode<TransactionInput>(request.body).value());
        return inputs;
    }
    void answer(const ServerReply& reply) { service.server.replace("POST v1/transactions", reply); }
    void saveAndWait()
    {
        click("entrySave");
        waitUntil([&] { return !service.store.isBusy(); });
        settle();
    }
    /// The question that the form asks before closing, or null.
    QAbstractButton* question(const char* button)
    {
        return form->findChild<QAbstractButton*>(QString::fromLatin1(button));
    }

    StoreUnderTest service;
    QMainWindow window;
    QPointer<TransactionForm> form;
};

/// An expense that can be saved.
inline void fill(FormUnderTest& under)
{
    under.type("entryAmount", "4385200");
    under.click("entryCategory0");
}
