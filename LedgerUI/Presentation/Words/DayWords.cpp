#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& dayWords()
{
    static const WordTable words{{
        {"day", "记账日期", "Tanggal pembukuan", "Ngày ghi sổ", "Bookkeeping date"},
        {"today", "今天", "Hari ini", "Hôm nay", "Today"},
        {"unreadable", "无法识别此日期。", "Tanggal ini tidak dapat dibaca.", "Không đọc được ngày này.",
         "This is not a date."},
        {"tooLate", "日期不能晚于 %1。", "Tanggal tidak boleh setelah %1.", "Ngày không được sau %1.",
         "The date cannot be after %1."},
        {"tooEarly", "记账自 %1 起，日期不能更早。", "Pembukuan dimulai pada %1. Tanggal tidak boleh lebih awal.",
         "Sổ bắt đầu từ %1. Ngày không được sớm hơn.", "The books start on %1. The date cannot be earlier."},
        {"keys", "输入日期，或用方向键和 +、− 调整", "Ketik tanggal, atau pakai tombol panah, + dan −",
         "Nhập ngày, hoặc dùng phím mũi tên, + và −", "Type a date, or use the arrow keys, + and −"},
        {"earlier", "上个月", "Bulan sebelumnya", "Tháng trước", "Previous month"},
        {"later", "下个月", "Bulan berikutnya", "Tháng sau", "Next month"},
    }};
    return words;
}
