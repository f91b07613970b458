#include "LedgerService/Mail/MailTexts.h"

#include "LedgerCore/Domain/Text/WordTable.h"

namespace LedgerService {

const WordTable& MailTexts::table()
{
    static const WordTable words{
        {"joinCodeSubject", "%1 是您的 Tallyfold 验证码", "Kode verifikasi Tallyfold Anda: %1",
         "Mã xác minh Tallyfold của bạn: %1", "Your Tallyfold code is %1"},
        {"joinCode",
         "您好！\n\n您的验证码是：%1\n\n请在 Tallyfold 中输入此验证码，完成加入“%2”。验证码 15 "
         "分钟内有效，只能使用一次。\n\n"
         "请勿将验证码告诉任何人。如果这不是您本人的操作，请忽略此邮件。\n",
         "Halo,\n\nKode verifikasi Anda: %1\n\nMasukkan kode ini di Tallyfold untuk bergabung dengan %2. Kode berlaku "
         "selama 15 menit dan hanya dapat dipakai satu kali.\n\nJangan berikan kode ini kepada siapa pun. Jika bukan "
         "Anda yang memintanya, abaikan email ini.\n",
         "Xin chào,\n\nMã xác minh của bạn: %1\n\nHãy nhập mã này trong Tallyfold để tham gia %2. Mã có hiệu lực trong "
         "15 phút và chỉ dùng được một lần.\n\nĐừng cho ai biết mã này. Nếu bạn không yêu cầu mã, hãy bỏ qua email "
         "này.\n",
         "Hello,\n\nYour code is: %1\n\nEnter it in Tallyfold to join %2. The code works once, within 15 minutes.\n\n"
         "Do not share it with anyone. If you did not ask for it, you can ignore this email.\n"},
        {"resetCodeSubject", "%1 是您的 Tallyfold 密码重置验证码", "Kode untuk mengatur ulang kata sandi Tallyfold: %1",
         "Mã đặt lại mật khẩu Tallyfold: %1", "%1 is your code to reset your Tallyfold password"},
        {"resetCode",
         "您好！\n\n您的验证码是：%1\n\n请在 Tallyfold 中输入此验证码，然后设置新密码。验证码 15 "
         "分钟内有效，只能使用一次。"
         "设置新密码后，其他设备上的登录将全部失效。\n\n请勿将验证码告诉任何人。如果这不是您本人的操作，请忽略此邮件，"
         "您的密码不会改变。\n",
         "Halo,\n\nKode Anda: %1\n\nMasukkan kode ini di Tallyfold, lalu buat kata sandi baru. Kode berlaku selama 15 "
         "menit dan hanya dapat dipakai satu kali. Setelah itu Anda akan keluar dari semua perangkat lain.\n\nJangan "
         "berikan kode ini kepada siapa pun. Jika bukan Anda yang memintanya, abaikan email ini; kata sandi Anda tidak "
         "berubah.\n",
         "Xin chào,\n\nMã của bạn: %1\n\nHãy nhập mã này trong Tallyfold, sau đó đặt mật khẩu mới. Mã có hiệu lực "
         "trong "
         "15 phút và chỉ dùng được một lần. Sau đó bạn sẽ bị đăng xuất khỏi mọi thiết bị khác.\n\nĐừng cho ai biết mã "
         "này. Nếu bạn không yêu cầu mã, hãy bỏ qua email này; mật khẩu của bạn không thay đổi.\n",
         "Hello,\n\nYour code is: %1\n\nEnter it in Tallyfold and then choose a new password. The code works once, "
         "within 15 minutes. You will be signed out on all other devices.\n\nDo not share it with anyone. If you did "
         "not ask for it, you can ignore this email; your password stays as it is.\n"},
        {"passwordChangedSubject", "您的 Tallyfold 密码已更改", "Kata sandi Tallyfold Anda telah diubah",
         "Mật khẩu Tallyfold của bạn đã được thay đổi", "Your Tallyfold password was changed"},
        {"passwordChanged",
         "您好！\n\n您的 Tallyfold "
         "密码刚刚被更改，其他设备上的登录已全部失效。\n\n如果这不是您本人的操作，请立即在登录页面"
         "选择重置密码，并通知您公司的管理员。\n",
         "Halo,\n\nKata sandi Tallyfold Anda baru saja diubah. Semua perangkat lain telah dikeluarkan.\n\nJika bukan "
         "Anda "
         "yang mengubahnya, segera atur ulang kata sandi dari layar masuk dan beri tahu administrator perusahaan "
         "Anda.\n",
         "Xin chào,\n\nMật khẩu Tallyfold của bạn vừa được thay đổi. Mọi thiết bị khác đã bị đăng xuất.\n\nNếu không "
         "phải "
         "bạn đã thay đổi, hãy đặt lại mật khẩu ngay từ màn hình đăng nhập và báo cho quản trị viên của công ty.\n",
         "Hello,\n\nYour Tallyfold password has just been changed. All other devices were signed out.\n\nIf this was "
         "not "
         "you, reset your password from the sign-in screen right away and tell your company administrator.\n"},
        {"invitationSubject", "邀请您加入“%1”", "Undangan bergabung dengan %1", "Lời mời tham gia %1",
         "You are invited to join %1"},
        {"invitation",
         "您好！\n\n%2 邀请您在 Tallyfold 中加入“%1”。\n\n请向邀请人索取激活码，然后打开 "
         "Tallyfold，选择激活账户，并输入此"
         "邮箱地址和激活码。\n\n如果您不认识邀请人，请忽略此邮件。\n",
         "Halo,\n\n%2 mengundang Anda untuk bergabung dengan %1 di Tallyfold.\n\nMinta kode aktivasi kepada "
         "pengundang, "
         "lalu buka Tallyfold, pilih aktivasi akun, dan masukkan alamat email ini beserta kodenya.\n\nJika Anda tidak "
         "mengenal pengundang, abaikan email ini.\n",
         "Xin chào,\n\n%2 mời bạn tham gia %1 trên Tallyfold.\n\nHãy hỏi người mời để nhận mã kích hoạt, sau đó mở "
         "Tallyfold, chọn kích hoạt tài khoản rồi nhập địa chỉ email này và mã đó.\n\nNếu bạn không quen người mời, "
         "hãy "
         "bỏ qua email này.\n",
         "Hello,\n\n%2 has invited you to join %1 in Tallyfold.\n\nAsk the person who invited you for the activation "
         "code. Then open Tallyfold, choose to activate an account, and enter this email address and the code.\n\nIf "
         "you do not know this person, you can ignore this email.\n"},
        {"receivedSubject", "我们已收到您的公司开户申请", "Pengajuan perusahaan Anda telah kami terima",
         "Chúng tôi đã nhận được đơn đăng ký công ty của bạn", "We have received your company application"},
        {"received",
         "您好！\n\n我们已收到使用此邮箱地址提交的 Tallyfold "
         "公司申请，正在等待平台审核。审核通过后，您会收到邮件通知，届时即可"
         "使用此邮箱登录。\n\n如果您没有提交申请，请忽略此邮件。\n",
         "Halo,\n\nKami telah menerima pengajuan perusahaan di Tallyfold dengan alamat email ini. Pengajuan sedang "
         "menunggu peninjauan. Kami akan mengirim email setelah disetujui, lalu Anda dapat masuk dengan alamat "
         "ini.\n\nJika bukan Anda yang mengajukannya, abaikan email ini.\n",
         "Xin chào,\n\nChúng tôi đã nhận được đơn đăng ký công ty trên Tallyfold với địa chỉ email này. Đơn đang chờ "
         "xét "
         "duyệt. Khi đơn được chấp thuận, chúng tôi sẽ gửi email cho bạn và bạn có thể đăng nhập bằng địa chỉ "
         "này.\n\nNếu bạn không gửi đơn, hãy bỏ qua email này.\n",
         "Hello,\n\nWe have received an application to open a company in Tallyfold with this email address. It is "
         "awaiting review. We will write to you once it is approved, and you can then sign in with this "
         "address.\n\nIf you did not apply, you can ignore this email.\n"},
        {"approvedSubject", "“%1”的申请已通过", "Pengajuan %1 disetujui", "Đơn đăng ký %1 đã được chấp thuận",
         "%1 has been approved"},
        {"approved", "您好！\n\n“%1”的 Tallyfold 公司申请已通过审核。您现在可以使用此邮箱登录，开始记账。\n",
         "Halo,\n\nPengajuan perusahaan %1 di Tallyfold telah disetujui. Anda sekarang dapat masuk dengan alamat email "
         "ini dan mulai mencatat.\n",
         "Xin chào,\n\nĐơn đăng ký công ty %1 trên Tallyfold đã được chấp thuận. Bây giờ bạn có thể đăng nhập bằng địa "
         "chỉ email này và bắt đầu ghi sổ.\n",
         "Hello,\n\nYour application to open %1 in Tallyfold has been approved. You can now sign in with this email "
         "address and start keeping your books.\n"},
        {"rejectedSubject", "“%1”的申请未通过", "Pengajuan %1 tidak disetujui", "Đơn đăng ký %1 không được chấp thuận",
         "%1 was not approved"},
        {"rejected", "您好！\n\n很抱歉，“%1”的 Tallyfold 公司申请未通过审核。如有疑问，请联系平台。\n",
         "Halo,\n\nMohon maaf, pengajuan perusahaan %1 di Tallyfold tidak disetujui. Hubungi pengelola layanan jika "
         "ada "
         "pertanyaan.\n",
         "Xin chào,\n\nRất tiếc, đơn đăng ký công ty %1 trên Tallyfold không được chấp thuận. Hãy liên hệ đơn vị vận "
         "hành nếu bạn có thắc mắc.\n",
         "Hello,\n\nWe are sorry: your application to open %1 in Tallyfold was not approved. Please contact the "
         "platform if you have questions.\n"},
    };
    return words;
}

namespace {

using MailTexts::Reader;

Mail written(const Reader& reader, const std::string& key, std::initializer_list<std::string_view> arguments)
{
    const auto& words = MailTexts::table();
    return {.to = reader.email,
            .locale = reader.locale,
            .subject = words.filled(key + "Subject", reader.locale, arguments),
            .text = words.filled(key, reader.locale, arguments)};
}

}

Mail MailTexts::joinCode(const Reader& reader, std::string_view code, std::string_view companyName)
{
    return written(reader, "joinCode", {code, companyName});
}

Mail MailTexts::resetCode(const Reader& reader, std::string_view code)
{
    return written(reader, "resetCode", {code});
}

Mail MailTexts::passwordChanged(const Reader& reader)
{
    return written(reader, "passwordChanged", {});
}

Mail MailTexts::invitation(const Reader& reader, std::string_view companyName, std::string_view inviterName)
{
    return written(reader, "invitation", {companyName, inviterName});
}

Mail MailTexts::applicationReceived(const Reader& reader)
{
    return written(reader, "received", {});
}

Mail MailTexts::applicationApproved(const Reader& reader, std::string_view companyName)
{
    return written(reader, "approved", {companyName});
}

Mail MailTexts::applicationRejected(const Reader& reader, std::string_view companyName)
{
    return written(reader, "rejected", {companyName});
}

}
