#include "LedgerCore/Domain/Imports/LedgerImportWords.h"

#include "LedgerCore/Domain/Imports/LedgerImportPlan.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& LedgerImportWords::table()
{
    static const WordTable words{
        {"encoding", "文件必须使用 UTF-8 编码。", "Berkas harus menggunakan pengodean UTF-8.",
         "Tệp phải dùng bảng mã UTF-8.", "The file must use UTF-8 encoding."},
        {"csv", "CSV 的引号或换行格式有误。", "Format tanda kutip atau baris CSV tidak valid.",
         "Định dạng dấu ngoặc kép hoặc xuống dòng của CSV không hợp lệ.", "The CSV quoting or line format is invalid."},
        {"header", "表头与下载的模板不一致。", "Baris judul tidak sesuai dengan templat yang diunduh.",
         "Hàng tiêu đề không khớp với mẫu đã tải xuống.", "The header does not match the downloaded template."},
        {"separator", "文件没有用逗号分隔各列。请将其另存为以逗号分隔的 CSV。",
         "Kolom dalam berkas tidak dipisahkan dengan koma. Simpan sebagai CSV yang dipisahkan koma.",
         "Các cột trong tệp không được ngăn cách bằng dấu phẩy. Hãy lưu thành CSV ngăn cách bằng dấu phẩy.",
         "The columns of the file are not separated by commas. Save it as CSV separated by commas."},
        {"columns", "列数不正确。", "Jumlah kolom tidak benar.", "Số cột không đúng.",
         "The column count is incorrect."},
        {"date", "日期无效，请使用 YYYY-MM-DD 格式。", "Tanggal tidak valid; gunakan YYYY-MM-DD.",
         "Ngày không hợp lệ; hãy dùng dạng YYYY-MM-DD.", "Invalid date; use YYYY-MM-DD."},
        {"beforeStart", "日期早于已确认并锁定的记账起始日期。",
         "Tanggal mendahului tanggal mulai pembukuan yang telah dikonfirmasi dan dikunci.",
         "Ngày này trước ngày bắt đầu ghi sổ đã được xác nhận và khóa.",
         "The date is before the confirmed and locked bookkeeping start date."},
        {"dateOrder", "请按日期从早到晚排列各行。", "Urutkan baris dari tanggal terlama ke terbaru.",
         "Hãy sắp xếp các dòng từ cũ đến mới.", "Sort rows from oldest to newest."},
        {"type", "类型必须是收入、支出、内部划拨、换汇或期初余额。",
         "Jenis harus Income (pemasukan), Expense (pengeluaran), Internal Transfer (transfer internal), Currency "
         "Exchange (penukaran mata uang), atau Opening Balance (saldo awal).",
         "Loại phải là Income (thu), Expense (chi), Internal Transfer (chuyển nội bộ), Currency Exchange (đổi "
         "tiền) hoặc Opening Balance (số dư đầu kỳ).",
         "Type must be Income, Expense, Internal Transfer, Currency Exchange, or Opening Balance."},
        {"account", "账户不存在、重名或不可见。", "Rekening tidak ada, namanya ganda, atau tidak terlihat oleh Anda.",
         "Tài khoản không tồn tại, trùng tên hoặc bạn không xem được.",
         "The account is missing, ambiguous, or not visible."},
        {"currency", "该账户不支持此币种。", "Mata uang tidak tersedia pada rekening ini.",
         "Tài khoản này không hỗ trợ loại tiền tệ này.", "The currency is not available on the account."},
        {"amount", "金额必须是大于零的有效数字。", "Jumlah harus berupa angka yang valid dan lebih besar dari nol.",
         "Số tiền phải là số hợp lệ lớn hơn 0.", "Amount must be a valid number greater than zero."},
        {"category", "分类不存在、重名或类型不符。", "Kategori tidak ada, namanya ganda, atau jenisnya salah.",
         "Hạng mục không tồn tại, trùng tên hoặc sai loại.",
         "The category is missing, ambiguous, or has the wrong type."},
        {"permission", "您当前的身份没有该账户所需的权限。",
         "Identitas Anda saat ini tidak memiliki izin yang diperlukan pada rekening ini.",
         "Tài khoản đăng nhập hiện tại của bạn chưa có quyền cần thiết trên tài khoản quỹ này.",
         "Your current identity lacks the required account permission."},
        {"targetAccount", "请填写唯一且可见的目标账户。", "Isi rekening tujuan yang unik dan terlihat oleh Anda.",
         "Hãy nhập một tài khoản đích duy nhất mà bạn xem được.", "Enter a unique, visible target account."},
        {"sameAccount", "内部划拨的两个账户不能相同。", "Kedua rekening pada transfer internal harus berbeda.",
         "Hai tài khoản chuyển nội bộ phải khác nhau.", "Internal transfer accounts must be different."},
        {"targetCurrency", "目标币种无效，或目标账户不支持该币种。",
         "Mata uang tujuan tidak valid atau tidak didukung oleh rekening tujuan.",
         "Loại tiền tệ đích không hợp lệ hoặc tài khoản đích không hỗ trợ.",
         "The target currency is invalid or unsupported by the target account."},
        {"targetAmount", "目标金额必须是大于零的有效数字。",
         "Jumlah tujuan harus berupa angka yang valid dan lebih besar dari nol.",
         "Số tiền đích phải là số hợp lệ lớn hơn 0.", "Target amount must be a valid number greater than zero."},
        {"noRows", "文件中没有数据行。", "Berkas tidak memiliki baris data.", "Tệp không có dòng dữ liệu nào.",
         "The file has no data rows."},
        {"fileSize", "文件不能超过 5 MB。", "Ukuran berkas tidak boleh melebihi 5 MB.", "Tệp không được vượt quá 5 MB.",
         "The file cannot exceed 5 MB."},
    };
    return words;
}

std::string_view LedgerImportWords::text(const LedgerImportIssue& issue, std::string_view locale)
{
    return text(issue.line == 1 && issue.value ? std::string_view{"separator"} : issue.message, locale);
}

std::string_view LedgerImportWords::text(std::string_view key, std::string_view locale)
{
    return table().text(key, AppLanguage::locale(locale));
}
