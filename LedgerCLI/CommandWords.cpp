#include "LedgerCLI/CommandWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

namespace LedgerCLI {

const WordTable& CommandWords::table()
{
    static const WordTable words{
        {"account", "账户", "Rekening", "Tài khoản", "Account"},
        {"currency", "币种", "Mata uang", "Loại tiền tệ", "Currency"},
        {"balance", "余额", "Saldo", "Số dư", "Balance"},
        {"participant", "参与人", "Peserta", "Người tham gia", "Participant"},
        {"ratio", "比例", "Porsi", "Tỷ lệ", "Share"},
        {"amount", "金额", "Jumlah", "Số tiền", "Amount"},
        {"line", "行", "Baris", "Dòng", "Line"},
        {"value", "内容", "Isi", "Nội dung", "Value"},
        {"problem", "问题", "Masalah", "Vấn đề", "Problem"},
        {"periodHeading", "%1 至 %2，%3", "%1 s.d. %2, %3", "%1 đến %2, %3", "%1 to %2, %3"},
        {"openingBalance", "期初", "Saldo awal", "Đầu kỳ", "Opening"},
        {"closingBalance", "期末", "Saldo akhir", "Cuối kỳ", "Closing"},
        {"income", "收入", "Pemasukan", "Thu", "Income"},
        {"expense", "支出", "Pengeluaran", "Chi", "Expense"},
        {"transfer", "内部划拨", "Transfer internal", "Chuyển nội bộ", "Transfers"},
        {"exchange", "换汇", "Penukaran", "Đổi ngoại tệ", "Exchanges"},
        {"opening", "期初余额录入", "Pencatatan saldo awal", "Ghi số dư đầu kỳ", "Opening balances"},
        {"capital", "出资", "Setoran modal", "Góp vốn", "Contributions"},
        {"dividend", "分红", "Dividen", "Cổ tức", "Dividends"},
        {"other", "其他", "Lainnya", "Khác", "Other"},
        {"noCategory", "无类别", "Tanpa kategori", "Không có hạng mục", "Without a category"},
        {"ofCategory", "%1：%2", "%1: %2", "%1: %2", "%1: %2"},
        {"ready", "可导入 %1 条记录。", "%1 catatan siap diimpor.", "%1 bản ghi sẵn sàng để nhập.",
         "%1 records are ready to import."},
        {"issues", "发现 %1 个问题；未写入任何数据。", "%1 masalah ditemukan; tidak ada data yang ditulis.",
         "Phát hiện %1 vấn đề; chưa ghi dữ liệu nào.", "%1 issues found; no data has been written."},
        {"written", "已写入 %1。", "%1 telah ditulis.", "Đã ghi %1.", "%1 has been written."},
        {"unreadable", "无法读取 %1。", "%1 tidak dapat dibaca.", "Không đọc được %1.", "%1 cannot be read."},
        {"unwritable", "无法创建导出文件，请重试。", "Berkas ekspor tidak dapat dibuat. Coba lagi.",
         "Không tạo được tệp xuất. Hãy thử lại.", "The export file could not be created. Try again."},
        {"outputUnwritable", "无法写入标准输出。", "Keluaran standar tidak dapat ditulis.",
         "Không ghi được ra đầu ra chuẩn.", "Standard output cannot be written."},
        {"noSnapshot", "%1 不是公司账簿快照。", "%1 bukan potret buku perusahaan.",
         "%1 không phải là bản chụp sổ sách công ty.", "%1 is not a snapshot of a company's books."},
        {"exportForbidden", "该成员没有导出权限。", "Anggota ini tidak berhak mengekspor.",
         "Thành viên này không có quyền xuất dữ liệu.", "This member may not export."},
        {"scopeUnseen", "所选账户或币种不在该成员可见的范围内。",
         "Ada rekening atau mata uang pilihan yang tidak terlihat oleh anggota ini.",
         "Có tài khoản hoặc loại tiền tệ đã chọn mà thành viên này không xem được.",
         "A chosen account or currency is not visible to this member."},
        {"noCapital", "此快照不含资本记录。", "Potret ini tidak memuat catatan modal.",
         "Bản chụp này không có dữ liệu vốn góp.", "This snapshot holds no capital records."},
        {"noDividends", "此快照不含分红记录。", "Potret ini tidak memuat catatan dividen.",
         "Bản chụp này không có dữ liệu cổ tức.", "This snapshot holds no dividend records."},
        {"badDay", "日期无效或顺序颠倒：%1 至 %2。", "Tanggal tidak valid atau terbalik: %1 s.d. %2.",
         "Ngày không hợp lệ hoặc sai thứ tự: %1 đến %2.", "Not days, or in the wrong order: %1 to %2."},
        {"noDay", "不是有效日期：%1", "Bukan tanggal: %1", "Không phải là ngày: %1", "Not a day: %1"},
        {"invalidAmount", "金额必须大于零且不超过上限。", "Jumlah harus lebih dari nol dan tidak melebihi batas.",
         "Số tiền phải lớn hơn 0 và không vượt giới hạn.",
         "The amount must be above zero and within the supported range."},
        {"invalidShares", "各参与人的比例之和必须正好为 10000 个基点，且每人只能列一次。",
         "Porsi para peserta harus berjumlah tepat 10000 basis poin, dan tiap peserta hanya disebut sekali.",
         "Tổng tỷ lệ phải đúng 10000 điểm cơ bản và mỗi người chỉ được nêu một lần.",
         "The shares must add up to exactly 10000 basis points, each participant once."},
        {"participantUnavailable", "有参与人不存在或已停用。", "Ada peserta yang tidak ada atau sudah diarsipkan.",
         "Có người tham gia không tồn tại hoặc đã lưu trữ.", "A participant does not exist or is archived."},
        {"figuresUnavailable", "无法计算这些数字：账簿中的日期或金额有误。",
         "Angka tidak dapat dihitung: ada tanggal atau jumlah yang salah dalam buku.",
         "Không tính được số liệu: sổ sách có ngày hoặc số tiền sai.",
         "The figures cannot be computed: the books hold a wrong day or amount."},
    };
    return words;
}

std::string_view CommandWords::text(std::string_view key, std::string_view locale)
{
    return table().text(key, locale);
}

std::string CommandWords::filled(std::string_view key, std::string_view locale,
                                 std::initializer_list<std::string_view> arguments)
{
    return table().filled(key, locale, arguments);
}

}
