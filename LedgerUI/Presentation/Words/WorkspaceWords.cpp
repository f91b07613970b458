#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& workspaceWords()
{
    static const WordTable words{
        {"summary", "概览", "Ringkasan", "Tổng quan", "Summary"},
        {"ledger", "账本", "Buku besar", "Sổ cái", "Ledger"},
        {"reports", "报表", "Laporan", "Báo cáo", "Reports"},
        {"accounts", "资金账户", "Rekening", "Tài khoản quỹ", "Accounts"},
        {"dividends", "资本与分红", "Modal & dividen", "Vốn & cổ tức", "Capital & dividends"},
        {"company", "公司", "Perusahaan", "Công ty", "Company"},
        {"pages", "页面", "Halaman", "Trang", "Pages"},
        {"member", "%1，%2。打开菜单", "%1, %2. Buka menu", "%1, %2. Mở trình đơn", "%1, %2. Open the menu"},
        {"settings", "设置…", "Pengaturan…", "Cài đặt…", "Settings…"},
        {"signOut", "退出登录", "Keluar", "Đăng xuất", "Sign out"},
        {"demoTitle", "演示公司", "Perusahaan contoh", "Công ty mẫu", "Demonstration company"},
        {"demoText", "更改不会影响您自己的公司。", "Perubahan tidak memengaruhi perusahaan Anda.",
         "Thay đổi không ảnh hưởng đến công ty của bạn.", "Changes do not affect your own companies."},
        {"demoAgain", "可用以下信息再次登录：", "Masuk lagi dengan:", "Đăng nhập lại bằng:", "Sign in again with:"},
        {"demoCopy", "复制邮箱", "Salin email", "Sao chép email", "Copy the e-mail"},
        {"demoSummary", "演示公司。再次登录：%1，密码 %2", "Perusahaan contoh. Masuk lagi: %1, kata sandi %2",
         "Công ty mẫu. Đăng nhập lại: %1, mật khẩu %2", "Demonstration company. Sign in again: %1, password %2"},
        {"updated", "更新于 %1", "Diperbarui %1", "Cập nhật lúc %1", "Updated %1"},
        {"notRefreshed", "自 %1 起未更新", "Belum diperbarui sejak %1", "Chưa cập nhật từ %1",
         "Not refreshed since %1"},
        {"refreshing", "正在更新账本…", "Memperbarui buku…", "Đang cập nhật sổ sách…", "Updating the books…"},
        {"refreshHint", "刷新（%1）", "Segarkan (%1)", "Làm mới (%1)", "Refresh (%1)"},
        {"quitTitle", "仍在等待服务答复", "Masih menunggu layanan", "Vẫn đang chờ dịch vụ trả lời",
         "Still waiting for the service"},
        {"quitText", "您发送的内容还没有得到答复。现在关闭就无法得知它是否已保存；再次发送之前，请先在账本中查看。",
         "Yang Anda kirim belum dijawab. Jika ditutup sekarang, Anda tidak akan tahu apakah itu tersimpan; periksa "
         "dahulu di buku sebelum mengirimnya lagi.",
         "Nội dung bạn gửi chưa được trả lời. Nếu đóng bây giờ, bạn sẽ không biết nội dung đó đã được lưu hay chưa; "
         "hãy "
         "xem lại sổ sách trước khi gửi lần nữa.",
         "What you sent is not answered yet. If you close now, you will not learn whether it was saved; look in the "
         "books before you send it again."},
        {"noEntries", "没有记录", "Belum ada catatan", "Chưa có bút toán", "No entries"},
        {"oneEntry", "可见 1 条记录", "1 catatan terlihat", "1 bút toán hiển thị", "1 entry visible"},
        {"unconfirmed.one", "1 个未确认的请求", "1 permintaan belum dipastikan", "1 yêu cầu chưa xác nhận",
         "1 unconfirmed request"},
        {"unconfirmed.many", "%1 个未确认的请求", "%1 permintaan belum dipastikan", "%1 yêu cầu chưa xác nhận",
         "%1 unconfirmed requests"},
        {"entries", "可见 %1 条记录", "%1 catatan terlihat", "%1 bút toán hiển thị", "%1 entries visible"},
    };
    return words;
}
