#include "LedgerUI/Presentation/SignIn/SignInWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& signInWords()
{
    static const WordTable words{
        {"language", "界面语言", "Bahasa antarmuka", "Ngôn ngữ giao diện", "Interface language"},
        {"tagline", "公司账目，支持您使用的每种货币。", "Pembukuan perusahaan, dalam setiap mata uang Anda.",
         "Sổ sách công ty, bằng mọi loại tiền tệ bạn dùng.", "Company books, in every currency you keep."},
        {"login", "登录", "Masuk", "Đăng nhập", "Sign in"},
        {"loginHint", "使用工作邮箱和密码", "Dengan email kerja dan kata sandi", "Bằng email công việc và mật khẩu",
         "With your work e-mail and password"},
        {"email", "工作邮箱", "Email kerja", "Email công việc", "Work e-mail"},
        {"password", "密码", "Kata sandi", "Mật khẩu", "Password"},
        {"emailRequired", "请输入工作邮箱。", "Masukkan email kerja Anda.", "Hãy nhập email công việc.",
         "Enter your work e-mail."},
        {"passwordRequired", "请输入密码。", "Masukkan kata sandi Anda.", "Hãy nhập mật khẩu.", "Enter your password."},
        {"showPassword", "显示密码", "Tampilkan kata sandi", "Hiện mật khẩu", "Show password"},
        {"hidePassword", "隐藏密码", "Sembunyikan kata sandi", "Ẩn mật khẩu", "Hide password"},
        {"signingIn", "正在登录…", "Sedang masuk…", "Đang đăng nhập…", "Signing in…"},
        {"connecting", "正在连接 %1…", "Menghubungi %1…", "Đang kết nối tới %1…", "Connecting to %1…"},
        {"signingOut", "正在退出登录…", "Sedang keluar…", "Đang đăng xuất…", "Signing out…"},
        {"openingSession", "正在打开上次的会话…", "Membuka sesi terakhir…", "Đang mở phiên trước…",
         "Opening the last session…"},
        {"stop", "停止", "Hentikan", "Dừng", "Stop"},
        {"demo", "试用演示", "Coba demonstrasi", "Dùng thử bản minh họa", "Try the demonstration"},
        {"demoHint", "含示例记录的样本公司。", "Perusahaan contoh dengan catatan contoh.",
         "Công ty mẫu với dữ liệu minh họa.", "A sample company with example records."},
        {"address", "服务地址", "Alamat layanan", "Địa chỉ dịch vụ", "Service address"},
        {"addressLabel", "账本服务的地址", "Alamat layanan buku besar", "Địa chỉ của dịch vụ sổ cái",
         "Address of the ledger service"},
        {"addressDefault", "使用默认地址", "Gunakan alamat bawaan", "Dùng địa chỉ mặc định", "Use the default address"},
    };
    return words;
}
