#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QObject>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Templates/TemplateProposals.h"

class LedgerStore;

/// The templates of the open company as the service told them last. They are loaded beside what a person does, with
/// every refresh of the books; nothing of them is kept on this machine.
class EntryTemplates final : public QObject {
    Q_OBJECT
public:
    explicit EntryTemplates(LedgerStore& store);

    /// Whether the service keeps templates and has told them once.
    [[nodiscard]] bool areOffered() const { return m_list.has_value(); }
    [[nodiscard]] const std::vector<EntryTemplate>& all() const;
    /// Null for one that is not there any more.
    [[nodiscard]] const EntryTemplate* find(std::string_view id) const;
    /// What waits for the signed-in member today.
    [[nodiscard]] std::vector<TemplateProposal> proposals() const;

    /// What the service has answered to a command.
    void adopt(EntryTemplateList list);
    void reload();

Q_SIGNALS:
    void changed();

private:
    using Owner = std::pair<std::string, std::string>; // company and member
    [[nodiscard]] std::optional<Owner> owner() const;
    void adoptSnapshot();
    void load();
    void finish(const std::optional<Owner>& asked, const Result<EntryTemplateList>& loaded);
    void hold(std::optional<EntryTemplateList> list);

    LedgerStore& m_store;
    std::optional<Owner> m_owner;
    std::optional<EntryTemplateList> m_list;
    bool m_isWanted = false; // once nothing runs
};
