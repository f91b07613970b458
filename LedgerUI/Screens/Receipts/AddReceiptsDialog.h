#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

class DraftReceipts;
class TextLabel;

/// Gives receipts to an entry that is recorded already. Deletes itself when it closes.
class AddReceiptsDialog final : public CommandForm {
    Q_OBJECT
public:
    /// What the dialog opens with.
    struct Opening {
        std::string entryID;
        std::vector<ReceiptSource> sources{}; // to be uploaded at once
        std::vector<ReceiptUpload> failed{};  // of the form that recorded the entry
        std::size_t uploaded = 0;             // by that form
    };

    AddReceiptsDialog(LedgerStore& store, Opening opening, QWidget* parent);

Q_SIGNALS:
    /// The entry carries more receipts now.
    void added(const QString& entryID);

private:
    struct Form {};
    using Linking = Submission<Form, std::vector<std::string>>; // of the uploaded receipts, by their ids

    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void submit();
    /// The receipts that are to be linked, unless there are none yet, which is said then.
    std::optional<std::vector<std::string>> checked();
    void send(const std::vector<std::string>& ids);
    void finish(const Result<void>& reply);
    [[nodiscard]] QString outcome() const;
    [[nodiscard]] Note note() const;

    std::string m_entryID;
    std::size_t m_uploaded = 0; // receipts that are on the entry by now
    Linking m_linking{Form{}};
    DraftReceipts* m_receipts = nullptr;
    TextLabel* m_head = nullptr;
    bool m_hasNone = false; // the person wanted to add no receipts
};
