#include "LedgerService/Books/Demonstration/DemoCategories.h"

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"

namespace LedgerService {

namespace {

struct DemoCategory {
    WordRow name; // "parent" or "parent.child"
    std::string_view kind;
    std::string_view symbol;
};

constexpr std::string_view income = EntryKind::income;
constexpr std::string_view expense = EntryKind::expense;

constexpr DemoCategory categories[]{
    {{"sales", "销售", "Penjualan", "Bán hàng", "Sales"}, income, "shop"},
    {{"sales.wholesale", "批发", "Grosir", "Bán buôn", "Wholesale"}, income, "boxes"},
    {{"sales.retail", "零售", "Eceran", "Bán lẻ", "Retail"}, income, "bag"},
    {{"sales.export", "出口", "Ekspor", "Xuất khẩu", "Export"}, income, "globe-asia-australia"},
    {{"services", "服务", "Jasa", "Dịch vụ", "Services"}, income, "tools"},
    {{"services.consulting", "咨询", "Konsultasi", "Tư vấn", "Consulting"}, income, "chat-square-text"},
    {{"services.installation", "安装", "Pemasangan", "Lắp đặt", "Installation"}, income, "wrench"},
    {{"otherIncome", "其他收入", "Pendapatan lain", "Thu nhập khác", "Other income"}, income, "piggy-bank"},
    {{"otherIncome.interest", "银行利息", "Bunga bank", "Lãi ngân hàng", "Bank interest"}, income, "bank"},
    {{"otherIncome.rebate", "供应商返利", "Rabat pemasok", "Chiết khấu nhà cung cấp", "Supplier rebate"},
     income,
     "percent"},
    {{"goods", "货物", "Barang", "Hàng hóa", "Goods"}, expense, "box-seam"},
    {{"goods.purchase", "采购", "Pembelian", "Mua hàng", "Purchases"}, expense, "cart-check"},
    {{"goods.packaging", "包装", "Kemasan", "Bao bì", "Packaging"}, expense, "box2"},
    {{"goods.customs", "关税", "Bea masuk", "Thuế nhập khẩu", "Customs duty"}, expense, "clipboard-data"},
    {{"logistics", "物流", "Logistik", "Vận chuyển", "Logistics"}, expense, "truck"},
    {{"logistics.sea", "海运", "Kargo laut", "Đường biển", "Sea freight"}, expense, "water"},
    {{"logistics.delivery", "本地配送", "Pengiriman lokal", "Giao hàng nội địa", "Local delivery"},
     expense,
     "truck-front"},
    {{"logistics.courier", "快递", "Kurir", "Chuyển phát", "Courier"}, expense, "envelope"},
    {{"premises", "场地", "Tempat usaha", "Mặt bằng", "Premises"}, expense, "building"},
    {{"premises.office", "办公室租金", "Sewa kantor", "Thuê văn phòng", "Office rent"}, expense, "buildings"},
    {{"premises.warehouse", "仓库租金", "Sewa gudang", "Thuê kho", "Warehouse rent"}, expense, "house-door"},
    {{"premises.repairs", "维修", "Perbaikan", "Sửa chữa", "Repairs"}, expense, "hammer"},
    {{"utilities", "水电与通信", "Utilitas", "Điện nước", "Utilities"}, expense, "lightning"},
    {{"utilities.electricity", "电费", "Listrik", "Điện", "Electricity"}, expense, "lightning-charge"},
    {{"utilities.internet", "网络", "Internet", "Internet", "Internet"}, expense, "wifi"},
    {{"utilities.water", "水费", "Air", "Nước", "Water"}, expense, "droplet"},
    {{"staff", "员工", "Karyawan", "Nhân sự", "Staff"}, expense, "people"},
    {{"staff.salaries", "工资", "Gaji", "Lương", "Salaries"}, expense, "cash-stack"},
    {{"staff.insurance", "社会保险", "Jaminan sosial", "Bảo hiểm xã hội", "Social insurance"}, expense, "shield-check"},
    {{"staff.meals", "加班餐", "Makan lembur", "Cơm làm thêm giờ", "Overtime meals"}, expense, "cup-hot"},
    {{"staff.travel", "差旅", "Perjalanan dinas", "Công tác", "Travel"}, expense, "airplane"},
    {{"office", "办公", "Kantor", "Văn phòng", "Office"}, expense, "briefcase"},
    {{"office.supplies", "办公用品", "Alat tulis", "Văn phòng phẩm", "Supplies"}, expense, "pencil"},
    {{"office.equipment", "设备", "Peralatan", "Thiết bị", "Equipment"}, expense, "laptop"},
    {{"office.software", "软件订阅", "Langganan perangkat lunak", "Phần mềm", "Software subscriptions"},
     expense,
     "cloud"},
    {{"marketing", "市场推广", "Pemasaran", "Tiếp thị", "Marketing"}, expense, "megaphone"},
    {{"marketing.ads", "线上广告", "Iklan daring", "Quảng cáo trực tuyến", "Online ads"}, expense, "badge-ad"},
    {{"marketing.fairs", "展会", "Pameran dagang", "Hội chợ", "Trade fairs"}, expense, "calendar-event"},
    {{"fees", "税费", "Pajak dan biaya", "Thuế và phí", "Taxes and fees"}, expense, "receipt"},
    {{"fees.tax", "税款", "Pajak", "Thuế", "Taxes"}, expense, "receipt-cutoff"},
    {{"fees.bank", "银行手续费", "Biaya bank", "Phí ngân hàng", "Bank charges"}, expense, "credit-card"},
    {{"fees.accounting", "会计审计", "Akuntan", "Kế toán kiểm toán", "Accounting"}, expense, "calculator"},
};

}

std::vector<Category> DemoCategories::make(const DemoIds& ids)
{
    std::vector<Category> made;
    int position = 0;
    for (const auto& [name, kind, symbol] : categories) {
        Category category;
        category.id = ids.category(name.key);
        category.kind = kind;
        for (const auto locale : AppLanguage::supportedLocales)
            category.names.emplace(locale, name.text(locale));
        category.symbol = symbol;
        if (const auto dot = name.key.find('.'); dot != std::string_view::npos)
            category.parentID = ids.category(name.key.substr(0, dot));
        category.sortOrder = position++;
        made.push_back(std::move(category));
    }
    return made;
}

}
