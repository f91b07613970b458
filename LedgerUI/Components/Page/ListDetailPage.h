#pragma once

#include <QList>
#include <QWidget>

class QSplitter;
class QStackedWidget;

/// What a page that lists things is put together from, each made in its place on the page.
struct ListDetailParts {
    QWidget* header = nullptr;  // without filters, passes the focus on to its first control
    QWidget* filters = nullptr; // passes the focus on to its first control; a page may have none
    QWidget* message = nullptr; // between filters and list; hidden while there is none; a page may have none
    QWidget* table = nullptr;
    QWidget* notice = nullptr; // in the table's place while it has nothing to show
    QWidget* strip = nullptr;  // below the table
    QWidget* detail = nullptr;
    QWidget* detailStop = nullptr; // where the focus goes in the detail
};

/// A page that lists things and shows one of them closely: the detail stands beside the list; in a narrow window it is
/// closed and opens over it. Focus always goes on to what is there.
class ListDetailPage final : public QWidget {
    Q_OBJECT
public:
    explicit ListDetailPage(QWidget* parent = nullptr);

    /// The places of the parts are their parents from the start, since whatever changes its parent is dressed once more
    /// with all that it holds. Header, filters and message stand on the page itself, table and notice in one place.
    [[nodiscard]] QWidget* listPlace() const;
    [[nodiscard]] QWidget* stripPlace() const { return m_list; }
    [[nodiscard]] QWidget* detailPlace() const;
    /// Once, before anything else.
    void arrange(const ListDetailParts& parts);

    enum class Content { table, notice };
    void show(Content content);
    /// Without contents there is nothing to filter or to look at closely.
    void setHasContents(bool hasContents);

    void toggleDetail();
    /// Shows the detail and puts the focus into it.
    void openDetail();
    void closeDetail();
    /// Goes back to the list: beside it the detail stays, over it it makes room.
    void leaveDetail();
    void focusContent();

    [[nodiscard]] bool isDetailShown() const { return m_place != Place::hidden; }
    [[nodiscard]] bool isNarrow() const;
    /// Table or notice, then the others that are shown, in reading order.
    [[nodiscard]] QList<QWidget*> panes() const;

Q_SIGNALS:
    /// The window became narrow or wide, or the detail came or went.
    void arranged();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Place { hidden, beside, over }; // where the detail stands
    void setPlace(Place place);
    void placeOverlay();

    ListDetailParts m_parts;
    QWidget* m_list = nullptr;
    QStackedWidget* m_stack = nullptr;
    QSplitter* m_splitter = nullptr;
    Place m_place = Place::beside;
    bool m_wasNarrow = false;
    bool m_hasContents = true;
};
