#include "LedgerUI/Presentation/Print/Paginator.h"

#include <algorithm>

#include "LedgerUI/Presentation/Print/PrintChart.h"
#include "LedgerUI/Presentation/Print/PrintColumns.h"
#include "LedgerUI/Presentation/Print/PrintPen.h"

namespace {

using Level = PrintedRow::Level;

constexpr double besideFacts = 160;
constexpr double aroundFacts = 60;
constexpr double beforeTable = 180;
constexpr double afterTitle = 40;
constexpr double hairline = 4;
constexpr double stroke = 10;
constexpr PrintFont companyFont{.size = 95, .isBold = false};
constexpr PrintFont titleFont{.size = 165, .isBold = true};
constexpr PrintFont factFont{.size = 85, .isBold = false};
constexpr PrintFont sectionFont{.size = 105, .isBold = true};
constexpr PrintFont noteFont{.size = 78, .isBold = false};

double lineHeight(PrintFont font)
{
    return font.size * 1.4;
}

double heightOf(const std::vector<PrintedBlock>& blocks, double line)
{
    std::size_t count = 0;
    for (const auto& block : blocks)
        count = std::max(count, block.lines.size());
    return static_cast<double>(count) * line;
}

bool hasHeads(const PrintedTable& table)
{
    return std::ranges::any_of(table.columns, [](const PrintedColumn& column) { return !column.head.isEmpty(); });
}

PrintedBlock blockOf(PrintMetrics& metrics, const QString& text, PrintFont font, PrintInk ink, double left,
                     double width)
{
    PrintedBlock block{.lines = {}, .left = left, .width = width};
    for (const auto& line : metrics.lines(text, font, width))
        block.lines.push_back({line, font, ink});
    return block;
}

/// One set of columns of a table on its way down the pages.
class TableFlow {
public:
    TableFlow(const PrintedTable& table, const PrintScale& scale, const PrintColumnSet& set, PrintMetrics& metrics,
              PrintPen& pen)
        : m_table{table}, m_scale{scale}, m_set{set}, m_metrics{metrics}, m_pen{pen}
    {
        if (hasHeads(table))
            m_heads = headBlocks();
    }

    void write(const QString& title)
    {
        std::vector<PrintedBlock> titled;
        if (!title.isEmpty())
            titled.push_back(blockOf(m_metrics, title, sectionFont, PrintInk::text, 0, m_pen.width()));
        const double titleHeight = heightOf(titled, lineHeight(sectionFont)) + afterTitle;
        auto next = m_table.rows.empty() ? std::vector<PrintedBlock>{} : rowBlocks(0);
        keepTogether(titleHeight + rowHeight(m_heads) + rowHeight(next));
        m_pen.write(titled, lineHeight(sectionFont));
        m_pen.advance(titled.empty() ? 0 : afterTitle);
        writeHeads();
        for (std::size_t at = 0; at < m_table.rows.size(); ++at) {
            const auto blocks = std::move(next);
            next = at + 1 < m_table.rows.size() ? rowBlocks(at + 1) : std::vector<PrintedBlock>{};
            const bool leads = m_table.rows[at].level == Level::group;
            if (at > 0 && keepTogether(rowHeight(blocks) + (leads ? rowHeight(next) : 0)))
                writeHeads();
            writeRow(m_table.rows[at], blocks, at == 0);
        }
    }

private:
    /// Goes to the next page unless this much is left here; true if it went.
    bool keepTogether(double height)
    {
        if (m_pen.room() >= height || height > m_pen.height())
            return false;
        m_pen.breakPage();
        return true;
    }

    [[nodiscard]] double rowHeight(const std::vector<PrintedBlock>& blocks) const
    {
        return blocks.empty() ? 0 : heightOf(blocks, m_scale.line()) + 2 * m_scale.padding();
    }

    void writeHeads()
    {
        if (m_heads.empty())
            return;
        m_pen.advance(m_scale.padding());
        m_pen.write(m_heads, m_scale.line());
        m_pen.advance(m_scale.padding());
        m_pen.rule(stroke, PrintInk::text);
    }

    void writeRow(const PrintedRow& row, const std::vector<PrintedBlock>& blocks, bool isFirst)
    {
        if (row.level == Level::total)
            m_pen.rule(stroke, PrintInk::text);
        else if (!isFirst)
            m_pen.rule(hairline, PrintInk::line);
        m_pen.advance(m_scale.padding());
        m_pen.write(blocks, m_scale.line(), [this] {
            writeHeads();
            m_pen.advance(m_scale.padding());
        });
        m_pen.advance(m_scale.padding());
    }

    /// Heads stand on the lowest line that any of them needs.
    std::vector<PrintedBlock> headBlocks()
    {
        std::vector<PrintedBlock> blocks;
        std::size_t count = 0;
        eachColumn([&](std::size_t column, double left, double width) {
            blocks.push_back(blockOf(m_metrics, m_table.columns[column].head, {.size = m_scale.small, .isBold = true},
                                     PrintInk::quiet, left, width));
            blocks.back().side = m_table.columns[column].side;
            count = std::max(count, blocks.back().lines.size());
        });
        for (auto& block : blocks)
            block.lines.insert(block.lines.begin(), count - block.lines.size(), PrintedLine{});
        return blocks;
    }

    std::vector<PrintedBlock> rowBlocks(std::size_t at)
    {
        const auto& row = m_table.rows[at];
        const auto font = PrintColumns::fontOf(m_scale, row.level);
        std::vector<PrintedBlock> blocks;
        if (row.level == Level::group)
            return {blockOf(m_metrics, row.cells.front().text, font, PrintInk::text, 0, m_pen.width())};
        eachColumn([&](std::size_t column, double left, double width) {
            const auto& cell = row.cells[column];
            const double indent = column == 0 && row.level == Level::child ? m_scale.indent() : 0;
            auto block = blockOf(m_metrics, cell.text, font, PrintInk::text, left + indent, width - indent);
            block.side = m_table.columns[column].side;
            if (!cell.second.isEmpty()) {
                const PrintFont small{.size = m_scale.small, .isBold = false};
                for (const auto& line : m_metrics.lines(cell.second, small, width - indent))
                    block.lines.push_back({line, small, PrintInk::quiet});
            }
            blocks.push_back(std::move(block));
        });
        return blocks;
    }

    template <class Visit>
    void eachColumn(Visit visit)
    {
        double left = 0;
        for (std::size_t at = 0; at < m_set.columns.size(); ++at) {
            visit(m_set.columns[at], left, m_set.widths[at]);
            left += m_set.widths[at] + m_scale.gap();
        }
    }

    const PrintedTable& m_table;
    const PrintScale& m_scale;
    const PrintColumnSet& m_set;
    PrintMetrics& m_metrics;
    PrintPen& m_pen;
    std::vector<PrintedBlock> m_heads;
};

class Pagination {
public:
    Pagination(const PrintedDocument& document, const PaperChoice& paper, const QStringList& families)
        : m_document{document}, m_metrics{families}, m_pen{document, paper.size, orientationFor(paper), m_metrics}
    {
    }

    PrintedPages made()
    {
        addHead();
        for (const auto& chart : m_document.charts) {
            m_pen.skip(beforeTable);
            PrintChart::write(chart, m_document.locale, m_metrics, m_pen);
        }
        for (const auto& table : m_document.tables)
            addTable(table);
        if (!m_document.notes.empty())
            m_pen.skip(beforeTable);
        for (const auto& note : m_document.notes)
            addParagraph(note, noteFont, PrintInk::quiet);
        return m_pen.finished();
    }

private:
    QPageLayout::Orientation orientationFor(const PaperChoice& paper)
    {
        if (paper.orientation != PaperChoice::Orientation::automatic)
            return paper.orientation == PaperChoice::Orientation::landscape ? QPageLayout::Landscape
                                                                            : QPageLayout::Portrait;
        const double upright = PrintPen::bodyWidth(paper.size, QPageLayout::Portrait);
        const bool stands = std::ranges::all_of(m_document.tables, [&](const PrintedTable& table) {
            return PrintColumns::fits(m_metrics, table, upright);
        });
        return stands ? QPageLayout::Portrait : QPageLayout::Landscape;
    }

    void addHead()
    {
        addParagraph(m_document.company, companyFont, PrintInk::quiet);
        addParagraph(m_document.title, titleFont, PrintInk::text);
        m_pen.skip(aroundFacts);
        double labels = 0;
        for (const auto& fact : m_document.facts)
            labels = std::max(labels, m_metrics.width(fact.label, factFont));
        labels = std::min(labels, m_pen.width() / 3);
        const double values = labels + besideFacts;
        for (const auto& fact : m_document.facts)
            m_pen.write({blockOf(m_metrics, fact.label, factFont, PrintInk::quiet, 0, labels),
                         blockOf(m_metrics, fact.value, factFont, PrintInk::text, values, m_pen.width() - values)},
                        lineHeight(factFont));
    }

    void addParagraph(const QString& text, PrintFont font, PrintInk ink)
    {
        if (!text.isEmpty())
            m_pen.write({blockOf(m_metrics, text, font, ink, 0, m_pen.width())}, lineHeight(font));
    }

    void addTable(const PrintedTable& table)
    {
        const auto plan = PrintColumns::plan(m_metrics, table, m_pen.width());
        for (const auto& set : plan.sets) {
            m_pen.skip(beforeTable);
            TableFlow{table, plan.scale, set, m_metrics, m_pen}.write(&set == plan.sets.data() ? table.title
                                                                                               : QString{});
        }
        addParagraph(table.note, noteFont, PrintInk::quiet);
    }

    const PrintedDocument& m_document;
    PrintMetrics m_metrics;
    PrintPen m_pen;
};

}

PrintedPages Paginator::pages(const PrintedDocument& document, const PaperChoice& paper, const QStringList& families)
{
    return Pagination{document, paper, families}.made();
}
