#include "LedgerUI/Components/Dialogs/FormDialog.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/testing/LabelAudit.h"
#include <QTest>

namespace {

class Form : public testing::Test {
protected:
    Form()
    {
        InterfaceLanguage::change("en-US");
        window.resize(900, 640);
        window.show();
        auto* body = new QWidget;
        auto* layout = new QVBoxLayout(body);
        note = new QLineEdit(body);
        note->setObjectName(QStringLiteral("note"));
        layout->addWidget(note);
        form.setBody(body, 528);
        form.setConfirmText(QStringLiteral("Save"));
        form.setHasChanges([this] { return !note->text().isEmpty(); });
        QObject::connect(&form, &FormDialog::confirmed, &form, [this] { ++confirmations; });
    }

    void open()
    {
        form.open();
        form.activateWindow();
        waitUntil([this] { return form.isActiveWindow(); });
    }

    QPushButton* questionButton(const char* name)
    {
        auto* button = form.findChild<QPushButton*>(QString::fromLatin1(name));
        require(button && button->isVisible(), "the question is open");
        return button;
    }

    QWidget window;
    FormDialog form{&window};
    QLineEdit* note = nullptr;
    int confirmations = 0;
};

}

TEST_F(Form, LeavesWithoutAQuestionWhenNothingChanged)
{
    open();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Form, AsksBeforeAChangedDraftIsLost)
{
    open();
    note->setText(QStringLiteral("draft"));
    form.close();
    EXPECT_TRUE(form.isVisible());
    QTest::mouseClick(questionButton("questionCancel"), Qt::LeftButton);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(note->text(), QStringLiteral("draft"));

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::mouseClick(&form.cancelButton(), Qt::LeftButton);
    QTest::mouseClick(questionButton("questionConfirm"), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Form, IsConfirmedByCtrlReturnAndNotWhileARequestRuns)
{
    open();
    QTest::keyClick(note, Qt::Key_Return);
    EXPECT_EQ(confirmations, 0);
    QTest::keyClick(note, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(confirmations, 1);

    form.setBusy(true, FormDialog::Leaving::blocked);
    QTest::keyClick(&form, Qt::Key_Return, Qt::ControlModifier);
    QTest::mouseClick(&form.confirmButton(), Qt::LeftButton);
    EXPECT_EQ(confirmations, 1);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(note->isEnabled());

    form.setBusy(false);
    EXPECT_EQ(form.confirmButton().text(), QStringLiteral("Save"));
    QTest::mouseClick(&form.confirmButton(), Qt::LeftButton);
    EXPECT_EQ(confirmations, 2);
}

TEST_F(Form, BeginsInItsFirstFieldAndEndsInItsFoot)
{
    open();
    EXPECT_TRUE(note->hasFocus());
    EXPECT_EQ(tabOrder(*note), (std::vector<std::string>{"note", "formCancel", "formConfirm"}));
}

TEST_F(Form, FitsTheSmallestWindowAndScrollsWhatDoesNot)
{
    note->setMinimumHeight(2000);
    auto* aside = new QWidget;
    form.setAside(aside, 400);
    form.banner().present(Banner::Kind::warn, QStringLiteral("A message."));
    open();
    EXPECT_LE(form.height(), 640);
    EXPECT_EQ(form.width(), 860);
    EXPECT_TRUE(form.confirmButton().isVisible());
}
