#include "LedgerCore/Domain/Categories/EnterpriseCategoryPresets.h"

namespace {

constexpr EnterpriseCategoryPreset rows[] = {
    // clang-format off
    {"product-sales", "income", "income.sales", "box-seam", {"商品销售收入", "Penjualan barang", "Doanh thu bán hàng", "Product sales"}},
    {"retail-sales", "income", "income.sales", "shop", {"零售收入", "Penjualan eceran", "Doanh thu bán lẻ", "Retail sales"}},
    {"wholesale-sales", "income", "income.sales", "boxes", {"批发收入", "Penjualan grosir", "Doanh thu bán buôn", "Wholesale sales"}},
    {"online-sales", "income", "income.sales", "cart-check", {"网店销售收入", "Penjualan daring", "Doanh thu bán hàng trực tuyến", "Online sales"}},
    {"export-sales", "income", "income.sales", "globe-asia-australia", {"出口销售收入", "Penjualan ekspor", "Doanh thu xuất khẩu", "Export sales"}},
    {"own-product-sales", "income", "income.sales", "gear-wide-connected", {"自产产品销售收入", "Penjualan hasil produksi sendiri", "Doanh thu bán thành phẩm", "Sales of own products"}},
    {"food-sales", "income", "income.sales", "cup-hot", {"餐饮收入", "Penjualan makanan dan minuman", "Doanh thu ăn uống", "Food and beverage sales"}},
    {"catering-income", "income", "income.sales", "basket", {"团餐与宴席收入", "Pendapatan katering", "Doanh thu suất ăn và tiệc", "Catering revenue"}},
    {"medicine-sales", "income", "income.sales", "capsule", {"药品销售收入", "Penjualan obat", "Doanh thu bán thuốc", "Medicine sales"}},
    {"scrap-sales", "income", "income.sales", "recycle", {"废料销售收入", "Penjualan sisa bahan", "Bán phế liệu", "Scrap sales"}},
    {"service-fees", "income", "income.services", "briefcase", {"服务费收入", "Pendapatan jasa", "Doanh thu dịch vụ", "Service fees"}},
    {"consulting-income", "income", "income.services", "chat-square-text", {"咨询收入", "Pendapatan konsultasi", "Doanh thu tư vấn", "Consulting revenue"}},
    {"project-income", "income", "income.services", "kanban", {"项目收入", "Pendapatan proyek", "Doanh thu dự án", "Project revenue"}},
    {"construction-income", "income", "income.services", "building-gear", {"工程款收入", "Pendapatan konstruksi", "Doanh thu thi công", "Construction revenue"}},
    {"design-income", "income", "income.services", "palette", {"设计收入", "Pendapatan desain", "Doanh thu thiết kế", "Design revenue"}},
    {"software-income", "income", "income.services", "laptop", {"软件与订阅收入", "Pendapatan perangkat lunak dan langganan", "Doanh thu phần mềm và thuê bao", "Software and subscriptions"}},
    {"repair-income", "income", "income.services", "wrench", {"维修保养收入", "Pendapatan perbaikan dan perawatan", "Doanh thu sửa chữa, bảo trì", "Repair and maintenance revenue"}},
    {"processing-income", "income", "income.services", "gear", {"加工费收入", "Pendapatan jasa maklon", "Doanh thu gia công", "Processing revenue"}},
    {"freight-income", "income", "income.services", "truck", {"运输收入", "Pendapatan angkutan", "Doanh thu vận tải", "Freight revenue"}},
    {"warehousing-income", "income", "income.services", "box2", {"仓储收入", "Pendapatan pergudangan", "Doanh thu kho bãi", "Warehousing revenue"}},
    {"medical-income", "income", "income.services", "heart-pulse", {"诊疗收入", "Pendapatan layanan kesehatan", "Doanh thu khám chữa bệnh", "Medical service revenue"}},
    {"tuition-income", "income", "income.services", "mortarboard", {"学费收入", "Uang sekolah dan kursus", "Thu học phí", "Tuition"}},
    {"training-income", "income", "income.services", "easel", {"培训收入", "Pendapatan pelatihan", "Doanh thu đào tạo", "Training revenue"}},
    {"rental-income", "income", "income.rights", "key", {"租金收入", "Pendapatan sewa", "Thu nhập cho thuê", "Rental income"}},
    {"equipment-rental-income", "income", "income.rights", "truck-flatbed", {"设备出租收入", "Pendapatan sewa peralatan", "Cho thuê thiết bị", "Equipment rental income"}},
    {"licensing-income", "income", "income.rights", "patch-check", {"授权许可收入", "Pendapatan lisensi", "Thu nhập cấp phép", "Licensing income"}},
    {"franchise-income", "income", "income.rights", "shop-window", {"加盟收入", "Pendapatan waralaba", "Thu nhập nhượng quyền", "Franchise income"}},
    {"commission-income", "income", "income.rights", "percent", {"佣金收入", "Pendapatan komisi", "Thu nhập hoa hồng", "Commission income"}},
    {"advertising-income", "income", "income.rights", "megaphone", {"广告收入", "Pendapatan iklan", "Thu nhập quảng cáo", "Advertising income"}},
    {"interest-income", "income", "income.finance", "bank", {"利息收入", "Pendapatan bunga", "Lãi tiền gửi", "Interest income"}},
    {"investment-income", "income", "income.finance", "graph-up-arrow", {"投资收益", "Hasil investasi", "Thu nhập đầu tư", "Investment income"}},
    {"loan-received", "income", "income.finance", "cash-stack", {"收到借款本金", "Pokok pinjaman yang diterima", "Nhận tiền vay gốc", "Loan principal received"}},
    {"asset-sale-income", "income", "income.finance", "tags", {"资产处置收入", "Hasil penjualan aset tetap", "Thu thanh lý tài sản", "Asset sale proceeds"}},
    {"tax-collected", "income", "income.finance", "receipt", {"代收税款", "Pajak yang dipungut", "Thuế thu hộ", "Taxes collected"}},
    {"tax-refund", "income", "income.finance", "receipt-cutoff", {"退税收入", "Pengembalian pajak", "Hoàn thuế", "Tax refunds"}},
    {"purchase-rebate", "income", "income.finance", "arrow-counterclockwise", {"采购返利", "Rabat pembelian", "Chiết khấu mua hàng được hưởng", "Purchase rebates"}},
    {"government-grant", "income", "income.other", "award", {"政府补助", "Hibah dan subsidi pemerintah", "Trợ cấp của nhà nước", "Government grants"}},
    {"donation-received", "income", "income.other", "balloon-heart", {"收到的捐赠", "Donasi yang diterima", "Tiền tài trợ nhận được", "Donations received"}},
    {"insurance-claim", "income", "income.other", "umbrella", {"保险理赔收入", "Klaim asuransi", "Bồi thường bảo hiểm", "Insurance claims"}},
    {"compensation-received", "income", "income.other", "shield-check", {"违约赔偿收入", "Ganti rugi yang diterima", "Tiền bồi thường nhận được", "Compensation received"}},
    {"deposit-returned", "income", "income.other", "piggy-bank", {"收回押金与保证金", "Uang jaminan yang kembali", "Nhận lại tiền đặt cọc", "Deposits returned"}},
    {"cash-surplus", "income", "income.other", "cash-coin", {"现金盘盈", "Kelebihan kas", "Thừa quỹ khi kiểm kê", "Cash surplus"}},
    {"other-income", "income", "income.other", "plus-circle", {"其他收入", "Pendapatan lain-lain", "Thu nhập khác", "Other income"}},
    // clang-format on
};

}

std::span<const EnterpriseCategoryPreset> EnterpriseCategoryPresets::income()
{
    return rows;
}
