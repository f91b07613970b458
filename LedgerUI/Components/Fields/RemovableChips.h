#pragma once

#include <string>
#include <vector>

#include <QWidget>

class WrapLayout;

/// What is chosen, as chips in as many rows as they need. Pressing one takes it away; its name for readers says so.
class RemovableChips final : public QWidget {
    Q_OBJECT
public:
    struct Entry {
        std::string id;
        QString text;
        QString removeName;

        bool operator==(const Entry&) const = default;
    };

    /// Each chip is named `prefix` and its id, by which tests find it.
    explicit RemovableChips(QString prefix, QWidget* parent = nullptr);

    void present(const std::vector<Entry>& entries);

Q_SIGNALS:
    void removed(const std::string& id);

private:
    QString m_prefix;
    WrapLayout* m_row = nullptr;
    std::vector<Entry> m_entries;
    std::vector<QWidget*> m_chips;
};
