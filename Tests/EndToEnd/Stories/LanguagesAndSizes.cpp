#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Story.h"

void tellOfLanguagesAndSizes(Stage& stage)
{
    stage.enterDemonstration("finance");
    for (const auto tag : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        stage.teller.step(QStringLiteral("The ledger in ") + qString(tag), [&] {
            stage.screen.keys("Ctrl+,");
            stage.screen.press("interfaceLanguage-" + std::string{tag});
            stage.screen.keys("Esc");
            stage.screen.waitUntilGone("settingsDialog");
        });
    }
    auto& window = stage.window;
    const auto usual = window.size();
    stage.teller.step(QStringLiteral("The smallest window"), [&] { window.resize(900, 640); });
    stage.teller.step(QStringLiteral("The smallest window in the dark"),
                      [] { Theme::current().install(ColorScheme::dark); });
    stage.teller.step(QStringLiteral("The ledger in the dark"), [&] { window.resize(usual); });
    Theme::current().install(ColorScheme::light);
}
