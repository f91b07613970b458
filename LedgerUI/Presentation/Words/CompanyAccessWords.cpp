#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& companyAccessWords()
{
    static const WordTable words{
        {"company", "%1。打开公司菜单", "%1. Buka menu perusahaan", "%1. Mở trình đơn công ty",
         "%1. Open the menu of companies"},
        {"yourCompanies", "您的公司", "Perusahaan Anda", "Công ty của bạn", "Your companies"},
        {"loading", "正在读取公司…", "Memuat perusahaan…", "Đang tải danh sách công ty…", "Loading the companies…"},
        {"awaitsReview", "%1（等待审核）", "%1 (menunggu peninjauan)", "%1 (chờ xét duyệt)", "%1 (awaits review)"},
        {"join", "用邀请码加入…", "Gabung dengan kode undangan…", "Tham gia bằng mã mời…",
         "Join with an invitation code…"},
        {"apply", "申请另一家公司…", "Ajukan perusahaan lain…", "Đăng ký công ty khác…", "Apply for another company…"},
        {"joinTitle", "加入公司", "Gabung dengan perusahaan", "Tham gia công ty", "Join a company"},
        {"joinLead", "请输入对方管理员给您的邀请码。加入后将打开该公司，您现有的公司保持不变。",
         "Masukkan kode undangan dari administrator perusahaan itu. Perusahaan itu lalu dibuka; perusahaan Anda yang "
         "lain tidak berubah.",
         "Hãy nhập mã mời do quản trị viên của công ty đó cung cấp. Công ty đó sẽ được mở; các công ty khác của bạn "
         "không thay đổi.",
         "Enter the invitation code from that company's administrator. The company then opens; your other companies "
         "stay as they are."},
        {"code", "邀请码", "Kode undangan", "Mã mời", "Invitation code"},
        {"codeRequired", "请输入邀请码。", "Masukkan kode undangan.", "Hãy nhập mã mời.", "Enter the invitation code."},
        {"check", "查看邀请", "Periksa undangan", "Xem lời mời", "Look at the invitation"},
        {"preview", "%1 邀请 %2 加入。", "%1 mengundang %2.", "%1 mời %2 tham gia.", "%1 invites %2."},
        {"joinConfirm", "加入并打开", "Gabung dan buka", "Tham gia và mở", "Join and open"},
        {"alreadyMember", "您已是该公司的成员。请在公司菜单中打开它。",
         "Anda sudah menjadi anggota perusahaan ini. Buka dari menu perusahaan.",
         "Bạn đã là thành viên của công ty này. Hãy mở công ty từ trình đơn.",
         "You are a member of this company already. Open it from the menu of companies."},
        {"applyTitle", "申请另一家公司", "Ajukan perusahaan lain", "Đăng ký công ty khác", "Apply for another company"},
        {"applyLead", "新公司会出现在公司菜单中；有些服务需要先审核通过。",
         "Perusahaan baru muncul di menu perusahaan, di sebagian layanan setelah disetujui.",
         "Công ty mới xuất hiện trong trình đơn công ty, ở một số dịch vụ thì sau khi được duyệt.",
         "The new company appears in the menu of companies, on some services once it is approved."},
        {"founded", "“%1”已开立，可在公司菜单中打开。", "%1 sudah dibuka dan ada di menu perusahaan.",
         "%1 đã được mở và có trong trình đơn công ty.", "%1 is open. You find it in the menu of companies."},
        {"name", "公司名称", "Nama perusahaan", "Tên công ty", "Company name"},
        {"nameRequired", "请输入公司名称。", "Masukkan nama perusahaan.", "Hãy nhập tên công ty.",
         "Enter the company's name."},
        {"nameMisfit", "公司名称须为一行，最多 120 个字符。",
         "Nama perusahaan harus satu baris, paling banyak 120 karakter.",
         "Tên công ty phải nằm trên một dòng, tối đa 120 ký tự.",
         "A company's name is one line of at most 120 characters."},
        {"applyConfirm", "提交申请", "Kirim pengajuan", "Gửi đơn đăng ký", "Send the application"},
        {"applyUnknown", "无法确认申请是否已送达。请重试：同一申请不会重复提交。",
         "Belum pasti apakah pengajuan diterima. Coba lagi: pengajuan yang sama tidak dicatat dua kali.",
         "Chưa rõ đơn đã được nhận hay chưa. Hãy thử lại: cùng một đơn sẽ không được ghi hai lần.",
         "It is not known whether the application arrived. Try again: the same application is not taken twice."},
    };
    return words;
}
