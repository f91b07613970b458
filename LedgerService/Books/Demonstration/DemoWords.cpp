#include "LedgerService/Books/Demonstration/DemoWords.h"

namespace LedgerService {

namespace {

const WordTable allNames{
    {"company", "澜舟国际贸易有限公司", "PT Lentera Niaga Nusantara", "Công ty TNHH Thương mại Đèn Biển",
     "Lantern Harbour Trading Pte Ltd"},

    {"owner", "林悦", "Lin Yue", "Lin Yue", "Lin Yue"},
    {"admin", "阮清香", "Nguyễn Thanh Hương", "Nguyễn Thanh Hương", "Nguyễn Thanh Hương"},
    {"finance", "Dewi Anggraini", "Dewi Anggraini", "Dewi Anggraini", "Dewi Anggraini"},
    {"partner", "佐藤健二", "Kenji Sato", "Kenji Sato", "Kenji Sato"},
    {"employee", "Rizky Pratama", "Rizky Pratama", "Rizky Pratama", "Rizky Pratama"},

    {"operating", "雅加达基本户", "Bank operasional Jakarta", "Ngân hàng Jakarta – vận hành", "Jakarta operating bank"},
    {"hanoi", "河内付款账户", "Bank Hanoi – pembayaran", "Ngân hàng Hà Nội – thanh toán", "Hanoi payments bank"},
    {"settlement", "新加坡结算户", "Rekening penyelesaian Singapura", "Tài khoản thanh toán Singapore",
     "Singapore settlement"},
    {"guangzhou", "广州采购户", "Rekening pemasok Guangzhou", "Tài khoản mua hàng Quảng Châu",
     "Guangzhou supplier account"},
    {"osaka", "大阪收款户", "Rekening penagihan Osaka", "Tài khoản thu tiền Osaka", "Osaka collections"},
    {"cash", "门店现金", "Kas toko", "Tiền mặt cửa hàng", "Shop cash"},
    {"float", "备用金 – Rizky Pratama", "Kas kecil – Rizky Pratama", "Quỹ tạm ứng – Rizky Pratama",
     "Petty cash – Rizky Pratama"},
    {"refunds", "客户退款", "Pengembalian dana pelanggan", "Hoàn tiền khách hàng", "Customer refunds"},

    {"partner0", "旭辉百货", "Toko Cahaya Abadi", "Cửa hàng Ánh Dương", "Brightway Stores"},
    {"partner1", "海港食品", "PT Pelabuhan Pangan", "Thực phẩm Cảng Xanh", "Harbour Foods"},
    {"partner2", "南岭家居", "CV Griya Selatan", "Nội thất Nam Sơn", "Southridge Home"},
    {"partner3", "青禾超市", "Swalayan Padi Hijau", "Siêu thị Lúa Xanh", "Greenfield Market"},
    {"partner4", "金帆五金", "UD Layar Mas", "Kim khí Buồm Vàng", "Golden Sail Hardware"},
    {"partner5", "望月酒店", "Hotel Purnama", "Khách sạn Trăng Rằm", "Full Moon Hotel"},
    {"partner6", "东溪文具", "Alat Tulis Kali Timur", "Văn phòng phẩm Suối Đông", "Eastbrook Stationery"},
    {"partner7", "云岭茶业", "Teh Bukit Awan", "Trà Đồi Mây", "Cloudhill Teas"},

    {"month1", "1月", "Januari", "tháng 1", "January"},
    {"month2", "2月", "Februari", "tháng 2", "February"},
    {"month3", "3月", "Maret", "tháng 3", "March"},
    {"month4", "4月", "April", "tháng 4", "April"},
    {"month5", "5月", "Mei", "tháng 5", "May"},
    {"month6", "6月", "Juni", "tháng 6", "June"},
    {"month7", "7月", "Juli", "tháng 7", "July"},
    {"month8", "8月", "Agustus", "tháng 8", "August"},
    {"month9", "9月", "September", "tháng 9", "September"},
    {"month10", "10月", "Oktober", "tháng 10", "October"},
    {"month11", "11月", "November", "tháng 11", "November"},
    {"month12", "12月", "Desember", "tháng 12", "December"},
};

const WordTable allNotes{
    {"opening", "账簿启用余额", "Saldo awal pembukuan", "Số dư đầu kỳ khi mở sổ", "Balance when the books were opened"},

    {"wholesale", "发票 INV-%2，%3", "Faktur INV-%2, %3", "Hóa đơn INV-%2, %3", "Invoice INV-%2, %3"},
    {"retail", "门店收款，%1", "Penerimaan toko, %1", "Doanh thu cửa hàng, %1", "Shop takings, %1"},
    {"export", "出口货款 EX-%2，%3", "Pembayaran ekspor EX-%2, %3", "Tiền hàng xuất khẩu EX-%2, %3",
     "Export shipment EX-%2, %3"},
    {"japan", "日本订单 JP-%2", "Pesanan Jepang JP-%2", "Đơn hàng Nhật JP-%2", "Japan order JP-%2"},
    {"consulting", "%1咨询费，%3", "Jasa konsultasi %1, %3", "Phí tư vấn %1, %3", "Consulting for %1, %3"},
    {"installation", "货架安装，%3", "Pemasangan rak, %3", "Lắp đặt kệ hàng, %3", "Shelving installed, %3"},
    {"interest", "%1存款利息", "Bunga tabungan %1", "Lãi tiền gửi %1", "Interest for %1"},
    {"rebate", "采购返利，%1", "Rabat pembelian, %1", "Chiết khấu mua hàng, %1", "Purchase rebate, %1"},

    {"purchase", "采购单 PO-%2，家居用品", "PO-%2, perlengkapan rumah", "Đơn mua PO-%2, đồ gia dụng",
     "PO-%2, household goods"},
    {"localPurchase", "采购单 PO-%2，厨具与餐具", "PO-%2, peralatan dapur", "Đơn mua PO-%2, đồ dùng nhà bếp",
     "PO-%2, kitchenware"},
    {"packaging", "纸箱与气泡膜", "Kardus dan plastik gelembung", "Thùng carton và màng bọc khí",
     "Cartons and bubble wrap"},
    {"customs", "报关单 %2 进口税", "Bea masuk, dokumen %2", "Thuế nhập khẩu, tờ khai %2",
     "Import duty, declaration %2"},
    {"sea", "广州至雅加达海运，提单 %2", "Kargo Guangzhou–Jakarta, B/L %2", "Cước Quảng Châu–Jakarta, vận đơn %2",
     "Guangzhou–Jakarta freight, B/L %2"},
    {"delivery", "%1市内配送", "Pengiriman dalam kota, %1", "Giao hàng nội thành, %1", "City deliveries, %1"},
    {"courier", "寄送样品，%3", "Kirim sampel, %3", "Gửi hàng mẫu, %3", "Samples sent to %3"},

    {"office", "办公室季度租金，自%1起", "Sewa kantor tiga bulan mulai %1", "Thuê văn phòng theo quý, từ %1",
     "Office rent for the quarter from %1"},
    {"warehouse", "河内仓库季度租金，自%1起", "Sewa gudang Hanoi tiga bulan mulai %1",
     "Thuê kho Hà Nội theo quý, từ %1", "Hanoi warehouse for the quarter from %1"},
    {"repairs", "仓库卷帘门维修", "Perbaikan pintu gulung gudang", "Sửa cửa cuốn kho", "Warehouse shutter repaired"},
    {"electricity", "办公室与仓库电费，%1", "Listrik kantor dan gudang, %1", "Tiền điện văn phòng và kho, %1",
     "Office and warehouse electricity, %1"},
    {"internet", "季度专线网络费，自%1起", "Internet kantor tiga bulan mulai %1", "Cáp quang văn phòng theo quý, từ %1",
     "Office line for the quarter from %1"},
    {"water", "水费，%1", "Air bersih, %1", "Tiền nước, %1", "Water, %1"},

    {"salaries", "%1工资，雅加达", "Gaji %1, Jakarta", "Lương %1, Jakarta", "Salaries for %1, Jakarta"},
    {"hanoiSalaries", "%1工资，河内", "Gaji %1, Hanoi", "Lương %1, Hà Nội", "Salaries for %1, Hanoi"},
    {"insurance", "社会保险，%1", "Iuran jaminan sosial, %1", "Bảo hiểm xã hội, %1", "Social insurance, %1"},
    {"meals", "仓库盘点加班餐", "Makan lembur tim gudang", "Cơm làm thêm giờ đội kho",
     "Meals for the warehouse late shift"},
    {"travel", "拜访客户：%3", "Kunjungan ke %3", "Đi gặp khách %3", "Visit to %3"},
    {"supplies", "纸张与墨盒", "Kertas dan tinta printer", "Giấy và mực in", "Paper and printer ink"},
    {"equipment", "条码扫描枪两把", "Dua pemindai barcode", "Hai máy quét mã vạch", "Two barcode scanners"},
    {"software", "仓储系统季度费，自%1起", "Sistem gudang tiga bulan mulai %1", "Phần mềm kho theo quý, từ %1",
     "Warehouse system for the quarter from %1"},
    {"ads", "搜索广告，%1", "Iklan pencarian, %1", "Quảng cáo tìm kiếm, %1", "Search ads, %1"},
    {"fair", "大阪礼品展展位", "Stan pameran hadiah Osaka", "Gian hàng hội chợ quà tặng Osaka",
     "Stand at the Osaka gift fair"},
    {"tax", "季度所得税预缴", "Angsuran pajak penghasilan", "Tạm nộp thuế thu nhập quý",
     "Quarterly income tax instalment"},
    {"charges", "跨境汇款手续费", "Biaya transfer luar negeri", "Phí chuyển tiền quốc tế", "Fees for transfers abroad"},
    {"accounting", "%1记账服务", "Jasa akuntan %1", "Dịch vụ kế toán %1", "Bookkeeper, %1"},

    {"deposit", "门店现金存入银行", "Setor kas toko ke bank", "Nộp tiền mặt cửa hàng vào ngân hàng",
     "Shop takings paid in"},
    {"topUp", "补充备用金，%1", "Isi ulang kas kecil, %1", "Bổ sung quỹ tạm ứng, %1", "Petty cash for %1"},
    {"handBack", "交回剩余备用金", "Sisa kas kecil dikembalikan", "Hoàn lại quỹ tạm ứng còn dư",
     "Unspent petty cash handed back"},
    {"refundFunds", "拨入退款备付金", "Dana untuk pengembalian pelanggan", "Chuyển tiền cho quỹ hoàn trả",
     "Set aside for customer refunds"},
    {"supplierFunds", "换汇支付广州供应商", "Penukaran untuk pemasok Guangzhou",
     "Đổi ngoại tệ trả nhà cung cấp Quảng Châu", "Converted for the Guangzhou suppliers"},
    {"hanoiFunds", "换汇支付河内开支", "Penukaran untuk biaya Hanoi", "Đổi ngoại tệ cho chi phí Hà Nội",
     "Converted for the Hanoi costs"},
    {"yenHome", "日元货款结汇", "Penukaran penerimaan yen", "Đổi tiền hàng yên Nhật", "Yen takings converted"},

    {"refundSurplus", "退款备付金结余转回", "Sisa dana pengembalian dipindahkan kembali",
     "Chuyển lại phần dư của quỹ hoàn trả", "Surplus of the refund money moved back"},
    {"damaged", "部分货物破损（%1）", "Sebagian barang rusak (%1)", "Một phần hàng bị hỏng (%1)",
     "Part of the goods arrived damaged (%1)"},
    {"overpaid", "客户重复付款", "Pelanggan membayar dua kali", "Khách chuyển khoản trùng", "The customer paid twice"},
    {"wrongAmount", "金额录入错误", "Nominal salah ketik", "Nhập sai số tiền", "Amount mistyped"},
    {"postedTwice", "重复录入", "Tercatat dua kali", "Ghi trùng hai lần", "Posted twice"},
    {"contribution", "%1增资款", "Setoran modal %1", "Góp vốn %1", "Capital paid in, %1"},
    {"wrongOwner", "选错股东", "Pemilik salah pilih", "Chọn nhầm chủ sở hữu", "Wrong owner chosen"},
    {"dividendPaid", "%1支付分红", "Dividen dibayar, %1", "Chi trả cổ tức, %1", "Dividend paid, %1"},
    {"dividendAdvance", "%1预付分红", "Dividen di muka, %1", "Tạm ứng cổ tức, %1", "Dividend advance, %1"},
    {"dividendBack", "退回部分预付分红", "Sebagian dividen di muka dikembalikan", "Hoàn lại một phần cổ tức tạm ứng",
     "Part of the advance given back"},
    {"dividendWrong", "汇错账户", "Terkirim ke rekening yang salah", "Chuyển nhầm tài khoản",
     "Sent to the wrong account"},
    {"dividendDropped", "利润改为留存", "Laba diputuskan untuk ditahan", "Quyết định giữ lại lợi nhuận",
     "Kept in the company after all"},
    {"wrongAccount", "选错账户", "Rekening salah pilih", "Chọn nhầm tài khoản", "Wrong account chosen"},
};

}

const WordTable& DemoWords::names()
{
    return allNames;
}

const WordTable& DemoWords::notes()
{
    return allNotes;
}

}
