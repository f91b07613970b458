#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& bookkeepingWords()
{
    static const WordTable words{
        {"start", "记账起始日期", "Tanggal mulai pembukuan", "Ngày bắt đầu ghi sổ", "Bookkeeping start date"},
        {"startOpen", "尚未确认。确认一次后即锁定；期初余额记在这一天，资金记录不得早于这一天。",
         "Belum dikonfirmasi. Dikonfirmasi sekali lalu terkunci; saldo awal dicatat pada hari itu dan tidak ada "
         "catatan "
         "dana sebelum itu.",
         "Chưa xác nhận. Chỉ xác nhận một lần rồi khóa; số dư đầu kỳ ghi vào ngày này và không có bút toán nào trước "
         "đó.",
         "Not confirmed yet. It is confirmed once and then locked: opening balances are booked on this day, and no "
         "funds "
         "record may be dated before it."},
        {"startLocked", "已于 %1 确认并锁定。期初余额记在这一天，资金记录不得早于这一天。",
         "Dikonfirmasi %1 dan terkunci. Saldo awal dicatat pada hari ini, dan tidak ada catatan dana sebelum hari ini.",
         "Đã xác nhận ngày %1 và khóa. Số dư đầu kỳ ghi vào ngày này, và không có bút toán nào trước ngày này.",
         "Confirmed on %1 and locked. Opening balances are booked on this day, and no funds record may be dated before "
         "it."},
        {"confirmed", "已确认", "Dikonfirmasi", "Đã xác nhận", "Confirmed"},
        {"setUp", "确认日期…", "Konfirmasi tanggal…", "Xác nhận ngày…", "Confirm date…"},
        {"openings", "期初余额", "Saldo awal", "Số dư đầu kỳ", "Opening balances"},
        {"openingsCount", "记录起始资金；这不是经营收入。%2 个账户币种中有 %1 个已有有效的期初余额。",
         "Catat dana awal; ini bukan pendapatan usaha. %1 dari %2 mata uang rekening sudah memiliki saldo awal aktif.",
         "Ghi số tiền ban đầu; đây không phải doanh thu. %1 trên %2 loại tiền của tài khoản đã có số dư đầu kỳ.",
         "Record starting funds. This is not operating income. %1 of %2 account currencies have an active opening "
         "balance."},
        {"openingsFromZero", "账簿从零开始，不需要期初余额。",
         "Pembukuan dimulai dari nol, jadi tidak perlu saldo awal.",
         "Sổ sách bắt đầu từ con số không nên không cần số dư đầu kỳ.",
         "The books began from zero, so no opening balances are needed."},
        {"openingsButton", "录入期初余额…", "Isi saldo awal…", "Nhập số dư đầu kỳ…", "Opening balances…"},
        {"openingsAll", "所有可录入的期初余额都已录入。", "Semua saldo awal yang dapat Anda catat sudah tercatat.",
         "Mọi số dư đầu kỳ bạn có thể nhập đều đã nhập.", "Every opening balance that you can record is recorded."},
        {"openingsDone", "期初余额已全部录入", "Semua saldo awal tercatat", "Đã nhập đủ số dư đầu kỳ",
         "All opening balances recorded"},
        {"contributions", "出资", "Setoran modal", "Góp vốn", "Capital contributions"},
        {"contributionsText", "关闭后不再接受新的出资。历史出资仍可按权限查看和更正。",
         "Jika mati, setoran baru ditolak. Setoran lama tetap dapat dilihat dan dikoreksi sesuai hak.",
         "Khi tắt, không nhận góp vốn mới. Các lần góp vốn cũ vẫn xem và điều chỉnh được theo quyền.",
         "When off, new contributions are refused. Historical contributions remain available to view and correct "
         "according to permissions."},
        {"dividends", "分红", "Dividen", "Cổ tức", "Dividends"},
        {"dividendsText", "关闭后不再接受新的分配和预支。已有分红仍可支付、抵扣、退回或更正。",
         "Jika mati, alokasi dan uang muka baru ditolak. Dividen yang ada tetap dapat dibayar, diperhitungkan, "
         "dikembalikan, atau dikoreksi.",
         "Khi tắt, không nhận phân bổ và tạm ứng mới. Cổ tức hiện có vẫn trả, cấn trừ, hoàn lại hoặc điều chỉnh được.",
         "When off, new allocations and advances are refused. Existing dividends can still be paid, offset, returned "
         "or "
         "corrected."},
        {"listing.contributions", "侧栏显示出资", "Setoran modal di bilah sisi", "Góp vốn ở thanh bên",
         "Contributions in the side bar"},
        {"listing.dividends", "侧栏显示分红", "Dividen di bilah sisi", "Cổ tức ở thanh bên",
         "Dividends in the side bar"},
        {"listingText", "两项都关闭时，侧栏不再列出“资本与分红”。权限和记录不变。立即生效。",
         "Jika keduanya mati, bilah sisi tidak lagi memuat Modal & dividen. Hak dan catatan tetap. Berlaku seketika.",
         "Khi cả hai đều tắt, thanh bên không còn mục Vốn góp & cổ tức. Quyền và bản ghi giữ nguyên. Có hiệu lực ngay.",
         "When both are off, the side bar no longer lists Capital & dividends. Rights and records stay. Takes effect "
         "at "
         "once."},
        {"listingDone", "侧栏已更新", "Bilah sisi diperbarui", "Đã cập nhật thanh bên", "Side bar updated"},
        {"on", "开", "Aktif", "Bật", "On"},
        {"off", "关", "Mati", "Tắt", "Off"},
        {"notSaved", "尚未保存", "Belum disimpan", "Chưa lưu", "Not saved yet"},
        {"colors", "交易颜色", "Warna transaksi", "Màu giao dịch", "Transaction colours"},
        {"colorsText", "全公司通用的各类记录颜色。图标和正负号不变。",
         "Warna untuk tiap jenis catatan di seluruh perusahaan. Ikon dan tanda tetap sama.",
         "Màu cho từng loại bút toán trong toàn công ty. Biểu tượng và dấu không đổi.",
         "Company-wide colours for each type of entry. Icons and signs stay the same."},
        {"change", "更改…", "Ubah…", "Thay đổi…", "Change…"},
        {"revision", "财务设置版本 %1", "Revisi pengaturan keuangan %1", "Phiên bản thiết lập tài chính %1",
         "Financial settings revision %1"},
        {"save", "保存设置", "Simpan pengaturan", "Lưu thiết lập", "Save settings"},
        {"saved", "财务设置已保存", "Pengaturan keuangan disimpan", "Đã lưu thiết lập tài chính",
         "Financial settings saved"},
        {"reload", "重新加载", "Muat ulang", "Tải lại", "Reload"},
        {"retry", "重试原请求", "Coba lagi permintaan semula", "Thử lại yêu cầu ban đầu", "Retry original request"},

        {"setupTitle", "账簿设置", "Penyiapan pembukuan", "Thiết lập sổ sách", "Bookkeeping setup"},
        {"setupOnce", "记账起始日期只能确认一次。确认前请核对公司最早的记录。",
         "Tanggal mulai pembukuan hanya dikonfirmasi sekali. Periksa catatan paling awal perusahaan sebelumnya.",
         "Ngày bắt đầu ghi sổ chỉ được xác nhận một lần. Hãy kiểm tra bản ghi sớm nhất của công ty trước khi xác nhận.",
         "The start date can be confirmed only once. Check the company's earliest record before you confirm."},
        {"mode", "起始方式", "Cara memulai", "Cách bắt đầu", "How the books begin"},
        {"mode.openingBalances", "从各账户的期初余额开始", "Mulai dengan saldo awal tiap rekening",
         "Bắt đầu với số dư đầu kỳ của từng tài khoản", "Begin with the opening balance of each account"},
        {"mode.fromZero", "从零开始", "Mulai dari nol", "Bắt đầu từ con số không", "Begin from zero"},
        {"earliest", "您能看到的最早记录：%1", "Catatan paling awal yang Anda lihat: %1",
         "Bản ghi sớm nhất mà bạn xem được: %1", "Earliest record that you can see: %1"},
        {"noneEarlier", "还没有记录。", "Belum ada catatan.", "Chưa có bút toán nào.", "There are no records yet."},
        {"dayWrong", "请输入 1900 年 1 月 1 日至 %1 之间的日期。", "Isi tanggal dari 1 Januari 1900 sampai %1.",
         "Hãy nhập ngày từ 1 tháng 1 năm 1900 đến %1.", "Enter a day from 1 January 1900 to %1."},
        {"calendar", "打开日历", "Buka kalender", "Mở lịch", "Open the calendar"},
        {"agreed", "我已核对，并确认此记账起始日期。", "Saya sudah memeriksa dan mengonfirmasi tanggal mulai ini.",
         "Tôi đã kiểm tra và xác nhận ngày bắt đầu ghi sổ này.", "I have checked and confirm this start date."},
        {"agreedMissing", "请先勾选确认。", "Centang konfirmasi lebih dahulu.", "Hãy đánh dấu xác nhận trước.",
         "Tick the confirmation first."},
        {"confirmAndLock", "确认并锁定", "Konfirmasi dan kunci", "Xác nhận và khóa", "Confirm and lock"},
        {"startConfirmed", "记账起始日期已确认", "Tanggal mulai pembukuan dikonfirmasi",
         "Đã xác nhận ngày bắt đầu ghi sổ", "Start date confirmed"},
        {"import", "导入历史记录", "Impor catatan lama", "Nhập các bút toán cũ", "Import historical records"},
        {"importText", "从 CSV 模板导入较早的记录。若记账起始日期尚未确认，请先导入，再把起始日期定为最早记录的日期。",
         "Memasukkan catatan lama dari templat CSV. Bila tanggal mulai pembukuan belum dikonfirmasi, impor dahulu, "
         "lalu "
         "tetapkan tanggal mulai pada tanggal catatan paling awal.",
         "Đưa các bút toán cũ vào từ mẫu CSV. Nếu ngày bắt đầu ghi sổ chưa được xác nhận, hãy nhập trước, rồi đặt ngày "
         "bắt đầu theo ngày của bút toán sớm nhất.",
         "Brings older records in from a CSV template. While the bookkeeping start date is not confirmed, import "
         "first, "
         "then set the start date to the day of the earliest record."},
        {"refused.noAuthority", "只有公司管理者可以更改。", "Hanya pengelola perusahaan yang dapat mengubahnya.",
         "Chỉ người quản lý công ty mới được thay đổi.", "Only those who manage the company change this."},
        {"refused.already", "起始日期已经确认。", "Tanggal mulai sudah dikonfirmasi.", "Ngày bắt đầu đã được xác nhận.",
         "The start date is confirmed already."},
        {"refused.date", "请选择有效的日期。", "Pilih tanggal yang benar.", "Hãy chọn ngày hợp lệ.",
         "Choose a valid day."},
        {"refused.tooEarly", "起始日期不能早于 1900 年 1 月 1 日。",
         "Tanggal mulai tidak boleh sebelum 1 Januari 1900.", "Ngày bắt đầu không được trước ngày 1 tháng 1 năm 1900.",
         "The start date cannot lie before 1 January 1900."},
        {"refused.future", "起始日期不能晚于明天。", "Tanggal mulai tidak boleh setelah besok.",
         "Ngày bắt đầu không được sau ngày mai.", "The start date cannot lie after tomorrow."},
        {"refused.afterEntries", "起始日期不能晚于最早的记录。",
         "Tanggal mulai tidak boleh setelah catatan paling awal.", "Ngày bắt đầu không được sau bản ghi sớm nhất.",
         "The start date cannot lie after the earliest record."},
        {"refused.other", "目前无法更改财务设置。请刷新后重试。",
         "Pengaturan keuangan tidak dapat diubah sekarang. Segarkan lalu coba lagi.",
         "Hiện không thể thay đổi thiết lập tài chính. Hãy làm mới rồi thử lại.",
         "The financial settings cannot be changed now. Refresh and try again."},

        {"colorsFor", "适用于 %1 的所有人。颜色用于图标、收入金额和图表。",
         "Untuk semua orang di %1. Warna dipakai pada ikon, jumlah masuk, dan grafik.",
         "Dùng cho mọi người trong %1. Màu áp dụng cho biểu tượng, số tiền vào và biểu đồ.",
         "For everyone in %1. Colours apply to icons, incoming amounts and charts."},
        {"colorsHint", "图标和正负号始终不变，含义不会只靠颜色表达。",
         "Ikon dan tanda tidak pernah berubah, jadi arti tidak bergantung pada warna saja.",
         "Biểu tượng và dấu không bao giờ đổi, nên ý nghĩa không chỉ dựa vào màu.",
         "Icons and signs never change, so no meaning rests on colour alone."},
        {"colorOf", "%1：%2", "%1: %2", "%1: %2", "%1: %2"},
    };
    return words;
}
