#include "Tests/EndToEnd/Stage/Desk.h"

#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QTest>

#include "LedgerCore/Client/Session/SessionKeychain.h"
#include "Tallyfold/MainWindow.h"
#include "Tallyfold/TallyfoldApp.h"
#include "Tests/EndToEnd/Stage/StoryTeller.h"

namespace {

/// A keychain that outlives the program that uses it.
class LentKeychain final : public SessionCredentialStore {
public:
    explicit LentKeychain(SessionMemory& kept) : m_kept{kept} {}

    QCoro::Task<Result<std::optional<SavedSession>>> readSession(std::string server) override
    {
        return m_kept.readSession(std::move(server));
    }
    QCoro::Task<Result<void>> saveSession(SavedSession session, std::string server) override
    {
        return m_kept.saveSession(std::move(session), std::move(server));
    }
    QCoro::Task<Result<void>> deleteSession(std::string server) override
    {
        return m_kept.deleteSession(std::move(server));
    }

private:
    SessionMemory& m_kept;
};

}

Desk::Desk(std::string service, const ScreenDriver& screen) : Desk{std::move(service), screen, Equipment{}} {}

Desk::Desk(std::string service, const ScreenDriver& screen, Equipment equipment)
    : m_service{std::move(service)}, m_equipment{std::move(equipment)}, m_screen{screen}
{
}

Desk::~Desk() = default;

void Desk::open()
{
    std::unique_ptr<SessionCredentialStore> keychain = std::make_unique<LentKeychain>(m_keychain);
    if (m_equipment.hasKeyring)
        keychain = std::make_unique<SessionKeychain>();
    m_program = std::make_unique<TallyfoldApp>(TallyfoldApp::Setup{
        .language = m_equipment.language, .credentials = std::move(keychain), .service = m_service});
    m_program->start();
    window().resize(1160, 760);
    window().activateWindow();
    expect(QTest::qWaitForWindowActive(&window()), QStringLiteral("the window is active"));
}

void Desk::close()
{
    window().close();
    m_screen.waitUntil("the window is closed", [this] { return !window().isVisible(); });
    bool isLeft = false;
    m_program->leave([&isLeft] { isLeft = true; });
    m_screen.waitUntil("the program ends", [&isLeft] { return isLeft; });
    m_program.reset();
}

MainWindow& Desk::window()
{
    return m_program->window();
}

void Desk::rest()
{
    window().hide();
}

void Desk::goOn()
{
    window().show();
    window().activateWindow();
    expect(QTest::qWaitForWindowActive(&window()), QStringLiteral("the window is active"));
    comeBack();
}

void comeBack()
{
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    settle();
}

void pastePhoto(ScreenDriver& screen, Qt::GlobalColor paper)
{
    QImage photo{900, 1200, QImage::Format_RGB32};
    photo.fill(paper);
    QApplication::clipboard()->setImage(photo);
    screen.keys("Ctrl+V");
}

void openCompanies(ScreenDriver& screen)
{
    screen.press("companyButton");
    screen.waitForText("Your companies");
    screen.waitUntil("the companies are listed", [&screen] { return !screen.says("Loading"); });
    settle();
}
