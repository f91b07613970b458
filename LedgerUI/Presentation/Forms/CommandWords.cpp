#include "LedgerUI/Presentation/Forms/CommandWords.h"

const WordTable& commandWords()
{
    static const WordTable table{
        {"closeUncertain", "关闭…", "Tutup…", "Đóng…", "Close…"},
        {"closeAnyway", "关闭", "Tutup", "Đóng", "Close"},
        {"keepOpen", "保持打开", "Tetap buka", "Giữ mở", "Keep open"},
        {"uncertainTitle", "结果尚未确认，仍要关闭？", "Tutup sebelum hasilnya dipastikan?",
         "Đóng khi kết quả chưa được xác nhận?", "Close before the result is known?"},
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
