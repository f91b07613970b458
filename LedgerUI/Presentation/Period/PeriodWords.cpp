#include "LedgerUI/Presentation/Period/PeriodWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& periodWords()
{
    static const WordTable words{{
        {"day", "日", "Hari", "Ngày", "Day"},
        {"week", "周", "Minggu", "Tuần", "Week"},
        {"month", "月", "Bulan", "Tháng", "Month"},
        {"quarter", "季度", "Kuartal", "Quý", "Quarter"},
        {"year", "年", "Tahun", "Năm", "Year"},
        {"allTime", "全部时间", "Semua waktu", "Mọi thời gian", "All time"},
        {"dates", "自选日期…", "Tanggal…", "Chọn ngày…", "Dates…"},
        {"this.day", "今天", "Hari ini", "Hôm nay", "Today"},
        {"this.week", "本周", "Minggu ini", "Tuần này", "This week"},
        {"this.month", "本月", "Bulan ini", "Tháng này", "This month"},
        {"this.quarter", "本季度", "Kuartal ini", "Quý này", "This quarter"},
        {"this.year", "今年", "Tahun ini", "Năm nay", "This year"},
        {"quarterOfYear", "%2年第 %1 季度", "Kuartal %1 %2", "Quý %1, %2", "Q%1 %2"},
        {"shortQuarter", "第 %1 季度", "K%1", "Quý %1", "Q%1"},
        {"count.day", "每日记录数", "Catatan per hari", "Số bút toán mỗi ngày", "Entries per day"},
        {"count.week", "每周记录数", "Catatan per minggu", "Số bút toán mỗi tuần", "Entries per week"},
        {"count.month", "每月记录数", "Catatan per bulan", "Số bút toán mỗi tháng", "Entries per month"},
        {"count.quarter", "每季度记录数", "Catatan per kuartal", "Số bút toán mỗi quý", "Entries per quarter"},
        {"count.year", "每年记录数", "Catatan per tahun", "Số bút toán mỗi năm", "Entries per year"},
        {"cell.one", "%1，1 条记录", "%1, 1 catatan", "%1, 1 bút toán", "%1, 1 entry"},
        {"cell.entries", "%1，%2 条记录", "%1, %2 catatan", "%1, %2 bút toán", "%1, %2 entries"},
        {"weekOf", "第 %1 周 · %2", "M%1 · %2", "T%1 · %2", "W%1 · %2"},
        {"accessibleName", "期间，%1", "Periode, %1", "Kỳ, %1", "Period, %1"},
        {"previous", "上一期间", "Periode sebelumnya", "Kỳ trước", "Previous period"},
        {"next", "下一期间", "Periode berikutnya", "Kỳ sau", "Next period"},
        {"nextRefused", "没有晚于今天的期间。", "Tidak ada periode setelah hari ini.", "Không có kỳ nào sau hôm nay.",
         "There is no period after today."},
        {"earlier", "更早", "Lebih awal", "Trước đó", "Earlier"},
        {"later", "更晚", "Lebih akhir", "Sau đó", "Later"},
        {"spans", "期间类型", "Jenis periode", "Loại kỳ", "Kinds of period"},
        {"cells", "选择期间", "Pilih periode", "Chọn kỳ", "Choose a period"},
        {"from", "从", "Dari", "Từ", "From"},
        {"to", "至", "Sampai", "Đến", "To"},
        {"apply", "应用", "Terapkan", "Áp dụng", "Apply"},
        {"datesReversed", "结束日期早于开始日期。", "Tanggal akhir mendahului tanggal awal.",
         "Ngày kết thúc đứng trước ngày bắt đầu.", "The last day is before the first."},
        {"allEntries", "全部 %1 条记录", "Semua %1 catatan", "Tất cả %1 bút toán", "All %1 entries"},
        {"allFrom", "从最早的记录到最近的记录。", "Dari catatan pertama hingga yang terbaru.",
         "Từ bút toán đầu tiên đến mới nhất.", "From the first entry to the latest."},
        {"show", "显示全部", "Tampilkan semua", "Hiện tất cả", "Show all"},
    }};
    return words;
}
