#include "LedgerUI/Presentation/Settings/SettingsWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& settingsWords()
{
    static const WordTable words{
        {"title", "设置", "Pengaturan", "Cài đặt", "Settings"},
        {"section.language", "语言", "Bahasa", "Ngôn ngữ", "Language"},
        {"section.profile", "我的资料", "Profil saya", "Hồ sơ của tôi", "My profile"},
        {"section.receipts", "此设备上的票据", "Bukti di perangkat ini", "Chứng từ trên thiết bị này",
         "Receipts on this device"},
        {"section.session", "会话", "Sesi", "Phiên đăng nhập", "Session"},
        {"interfaceLanguage", "界面语言", "Bahasa antarmuka", "Ngôn ngữ giao diện", "Interface language"},
        {"system", "跟随系统", "Ikuti bahasa sistem", "Theo ngôn ngữ hệ thống", "Follow the system"},
        {"languageHint", "语言立即生效。您输入的内容（如备注和账户名称）不会被翻译。",
         "Bahasa berubah seketika. Data yang Anda ketik, seperti keterangan dan nama rekening, tidak diterjemahkan.",
         "Ngôn ngữ thay đổi ngay. Nội dung bạn nhập, như ghi chú và tên tài khoản, không được dịch.",
         "The language changes at once. What you have typed, such as notes and names of accounts, is not translated."},
        {"name", "姓名", "Nama", "Họ và tên", "Name"},
        {"nameHint", "您的姓名在所有公司中都会更改。", "Nama Anda berubah di semua perusahaan.",
         "Tên của bạn thay đổi ở mọi công ty.", "Your name changes in every company."},
        {"nameMisfit", "姓名须为一行，1 至 120 个字符。", "Nama harus satu baris dengan 1 sampai 120 karakter.",
         "Họ và tên phải nằm trên một dòng, từ 1 đến 120 ký tự.", "A name is one line of 1 to 120 characters."},
        {"saveName", "保存姓名", "Simpan nama", "Lưu tên", "Save the name"},
        {"nameSaved", "姓名已保存。", "Nama disimpan.", "Đã lưu tên.", "The name is saved."},
        {"password", "更改密码", "Ubah kata sandi", "Đổi mật khẩu", "Change the password"},
        {"currentPassword", "当前密码", "Kata sandi sekarang", "Mật khẩu hiện tại", "Current password"},
        {"newPassword", "新密码", "Kata sandi baru", "Mật khẩu mới", "New password"},
        {"passwordHint", "您在其他设备上的会话会结束。", "Sesi Anda di perangkat lain akan berakhir.",
         "Các phiên của bạn trên thiết bị khác sẽ kết thúc.", "Your sessions on other devices end."},
        {"currentRequired", "请输入当前密码。", "Masukkan kata sandi sekarang.", "Hãy nhập mật khẩu hiện tại.",
         "Enter the current password."},
        {"currentWrong", "当前密码不正确。", "Kata sandi sekarang salah.", "Mật khẩu hiện tại không đúng.",
         "The current password is wrong."},
        {"passwordShort", "密码至少需要 8 个字符。", "Kata sandi sedikitnya 8 karakter.",
         "Mật khẩu cần ít nhất 8 ký tự.", "A password has at least 8 characters."},
        {"passwordLong", "密码过长。", "Kata sandi terlalu panjang.", "Mật khẩu quá dài.", "The password is too long."},
        {"savePassword", "保存密码", "Simpan kata sandi", "Lưu mật khẩu", "Save the password"},
        {"passwordSaved", "密码已更改。", "Kata sandi diubah.", "Đã đổi mật khẩu.", "The password is changed."},
        {"showPassword", "显示密码", "Tampilkan kata sandi", "Hiện mật khẩu", "Show password"},
        {"hidePassword", "隐藏密码", "Sembunyikan kata sandi", "Ẩn mật khẩu", "Hide password"},
        {"receiptsHint", "仅删除已下载到此设备的副本。服务上的票据和账本记录不变。",
         "Hanya salinan yang diunduh ke perangkat ini yang dihapus. Bukti di layanan dan catatan buku besar tidak "
         "berubah.",
         "Chỉ xóa các bản đã tải về thiết bị này. Chứng từ trên dịch vụ và bút toán không thay đổi.",
         "Only the copies that were downloaded to this device are removed. The receipts at the service and the "
         "entries stay as they are."},
        {"clear", "清除缓存…", "Hapus cache…", "Xóa bộ nhớ đệm…", "Clear the cache…"},
        {"clearTitle", "清除已下载的票据？", "Hapus bukti yang diunduh?", "Xóa chứng từ đã tải về?",
         "Clear the downloaded receipts?"},
        {"clearConfirm", "清除", "Hapus", "Xóa", "Clear"},
        {"signedInAs", "登录身份", "Masuk sebagai", "Đăng nhập với", "Signed in as"},
        {"service", "服务地址", "Alamat layanan", "Địa chỉ dịch vụ", "Service address"},
        {"signOut", "退出登录", "Keluar", "Đăng xuất", "Sign out"},
        {"sessionHint", "关闭窗口不会退出登录；退出登录会删除此设备上保存的会话。",
         "Menutup jendela tidak mengakhiri sesi; keluar menghapus sesi yang tersimpan di perangkat ini.",
         "Đóng cửa sổ không đăng xuất; đăng xuất sẽ xóa phiên đã lưu trên thiết bị này.",
         "Closing the window does not sign you out; signing out removes the session kept on this device."},
    };
    return words;
}
