#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& requestWords()
{
    static const WordTable table{
        {"title", "未确认的请求", "Permintaan yang belum dipastikan", "Yêu cầu chưa được xác nhận",
         "Unconfirmed requests"},
        {"hint", "服务没有确认这些请求。重试会原样再次发送，最多只记录一次。",
         "Layanan belum memastikan permintaan ini. Coba lagi mengirimnya tanpa perubahan dan mencatatnya paling banyak "
         "sekali.",
         "Dịch vụ chưa xác nhận các yêu cầu này. Thử lại sẽ gửi nguyên như cũ và chỉ ghi nhận tối đa một lần.",
         "The service has not confirmed these. Retrying sends each one again as it stands; it is recorded at most "
         "once."},
        {"none", "没有未确认的请求", "Tidak ada permintaan yang belum dipastikan", "Không có yêu cầu nào chưa xác nhận",
         "No unconfirmed requests"},
        {"list", "未确认的请求列表", "Daftar permintaan yang belum dipastikan", "Danh sách yêu cầu chưa xác nhận",
         "List of unconfirmed requests"},
        {"retry", "重试", "Coba lagi", "Thử lại", "Retry"},
        {"open", "打开表单", "Buka formulir", "Mở biểu mẫu", "Open form"},
        {"retryOf", "重试：%1", "Coba lagi: %1", "Thử lại: %1", "Retry: %1"},
        {"openOf", "打开表单：%1", "Buka formulir: %1", "Mở biểu mẫu: %1", "Open form: %1"},
        {"confirmed", "已确认：%1", "Dipastikan: %1", "Đã xác nhận: %1", "Confirmed: %1"},
        {"refused", "服务拒绝了该请求，没有记录：%1", "Layanan menolaknya; tidak ada yang dicatat: %1",
         "Dịch vụ đã từ chối; không có gì được ghi nhận: %1", "The service refused it and recorded nothing: %1"},
        {"unknown", "可能已经记录", "Mungkin sudah tercatat", "Có thể đã được ghi nhận", "May have been recorded"},
        {"unsent", "没有记录", "Tidak tercatat", "Chưa được ghi nhận", "Not recorded"},
        {"when", "记账日 %1 · 发送于 %2", "Untuk %1 · dikirim %2", "Ngày %1 · gửi lúc %2", "For %1 · sent %2"},
        {"reversal", "冲销：%1", "Pembatalan: %1", "Đảo bút toán: %1", "Reversal: %1"},
        {"reversal.entry", "冲销一笔记录", "Pembatalan sebuah catatan", "Đảo một bút toán", "Reversal of an entry"},
        {"capital.setParticipant", "股东", "Pemilik", "Cổ đông", "Owner"},
        {"capital.contribute", "出资", "Setoran modal", "Góp vốn", "Contribution"},
        {"capital.reverse", "冲销出资", "Pembatalan setoran modal", "Đảo khoản góp vốn", "Reversal of a contribution"},
        {"capital.setBaseline", "历史出资", "Setoran historis", "Số góp vốn trước đây", "Earlier contributions"},
        {"capital.setOwnership", "持股比例", "Kepemilikan", "Tỷ lệ sở hữu", "Ownership"},
        {"capital.setVisibility", "出资在侧栏中的显示", "Setoran modal di bilah sisi", "Hiển thị góp vốn ở thanh bên",
         "Contributions in the side bar"},
        {"dividend.setParticipant", "分红参与人", "Peserta dividen", "Người nhận cổ tức", "Dividend participant"},
        {"dividend.setVisibility", "分红在侧栏中的显示", "Dividen di bilah sisi", "Hiển thị cổ tức ở thanh bên",
         "Dividends in the side bar"},
        {"dividend.allocate", "分配分红", "Alokasi dividen", "Phân bổ cổ tức", "Dividend allocation"},
        {"dividend.apply", "抵扣预支", "Penerapan uang muka", "Cấn trừ tạm ứng", "Advance applied"},
        {"dividend.cancelBatch", "取消分配", "Pembatalan alokasi", "Hủy phân bổ", "Allocation cancelled"},
        {"dividend.advance", "预支分红", "Uang muka dividen", "Tạm ứng cổ tức", "Dividend advance"},
        {"dividend.pay", "支付分红", "Pembayaran dividen", "Chi trả cổ tức", "Dividend payment"},
        {"dividend.return", "退回预支", "Pengembalian uang muka", "Hoàn lại tạm ứng", "Advance returned"},
        {"dividend.reverse", "冲销分红变动", "Pembatalan gerakan dividen", "Đảo giao dịch cổ tức",
         "Reversal of a dividend movement"},
        {"dividend.fillFromOwnership", "按持股比例设置分红比例", "Rasio dividen dari kepemilikan",
         "Tỷ lệ cổ tức theo sở hữu", "Dividend ratios from ownership"},
    };
    return table;
}
