#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& commandWords()
{
    static const WordTable table{
        {"closeUncertain", "关闭…", "Tutup…", "Đóng…", "Close…"},
        {"closeAnyway", "关闭", "Tutup", "Đóng", "Close"},
        {"keepOpen", "保持打开", "Tetap buka", "Giữ mở", "Keep open"},
        {"uncertainTitle", "结果尚未确认，仍要关闭？", "Tutup sebelum hasilnya dipastikan?",
         "Đóng khi kết quả chưa được xác nhận?", "Close before the result is known?"},
        {"uncertain", "结果尚未确认，内容已锁定。请重试原请求，以免重复提交。",
         "Hasilnya belum dipastikan. Isi dikunci. Coba lagi permintaan semula agar tidak terkirim ganda.",
         "Kết quả chưa được xác nhận. Nội dung đã bị khóa. Hãy thử lại yêu cầu ban đầu để tránh thực hiện hai lần.",
         "The result is unconfirmed. Content is locked. Retry the original request so that nothing is done twice."},
        {"uncertainDiscard", "更改可能已经生效。再次提交前，请先关闭并刷新核对。",
         "Perubahan mungkin sudah tersimpan. Tutup lalu muat ulang untuk memeriksanya sebelum mengirimnya lagi.",
         "Thay đổi có thể đã được lưu. Hãy đóng và làm mới để kiểm tra trước khi gửi lại.",
         "The change may already have been made. Close and refresh to check before sending it again."},
        {"otherCompany", "此表单属于 %1。请重新打开该公司后继续。",
         "Formulir ini milik %1. Buka kembali perusahaan itu untuk melanjutkan.",
         "Biểu mẫu này thuộc về %1. Hãy mở lại công ty đó để tiếp tục.",
         "This form belongs to %1. Open that company again to go on."},
        {"counter", "已输入 %1/%2 个字符", "%1 dari %2 karakter", "%1/%2 ký tự", "%1 of %2 characters"},
        {"tooLong", "最多 %1 个字符，请删减 %2 个。", "Paling banyak %1 karakter. Kurangi %2 karakter.",
         "Tối đa %1 ký tự. Hãy bớt %2 ký tự.", "At most %1 characters. Shorten it by %2."},
    };
    return table;
}
