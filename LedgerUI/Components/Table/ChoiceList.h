#pragma once

#include <set>
#include <string>
#include <vector>

#include <QWidget>

class QListWidget;
class QListWidgetItem;
class SearchField;
class TextLabel;

/// A bounded, scrolling list of things to tick, with a row on top for "all of them" and, where it is long, a search.
/// A click or Space ticks a row; in the search Down goes to the rows and Return ticks the first that matches.
class ChoiceList final : public QWidget {
    Q_OBJECT
public:
    using Chosen = std::set<std::string, std::less<>>;
    struct Choice {
        std::string id;
        QString text;
        bool isIndented = false; // belongs to the last one that is not

        bool operator==(const Choice&) const = default;
    };
    struct Words {
        QString name;
        QString all; // empty where there is no such row
        QString search;
        QString noMatch;
    };

    explicit ChoiceList(QWidget* parent = nullptr);

    void present(const Words& words, const std::vector<Choice>& choices, Chosen chosen);
    /// The height at which everything is in sight.
    [[nodiscard]] int wholeHeight() const;
    /// Where keys begin: the search where there is one, else the first row.
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void chosenChanged(const ChoiceList::Chosen& chosen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void toggle(const QListWidgetItem* item);
    void narrow(const QString& typed);
    void presentTicks();

    Chosen m_chosen;
    SearchField* m_search = nullptr;
    TextLabel* m_none = nullptr; // said while nothing matches the search
    QListWidget* m_list = nullptr;
};
