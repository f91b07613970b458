#include "LedgerCore/Domain/Categories/EnterpriseCategoryPresets.h"

namespace {

constexpr EnterpriseCategoryGroup rows[] = {
    // clang-format off
    {"income.sales", {"销售收入", "Penjualan", "Bán hàng", "Sales"}},
    {"income.services", {"服务与项目收入", "Jasa dan proyek", "Dịch vụ và dự án", "Services and projects"}},
    {"income.rights", {"租赁与授权收入", "Sewa dan lisensi", "Cho thuê và cấp phép", "Rental and licensing"}},
    {"income.finance", {"财务收入", "Pendapatan keuangan", "Thu nhập tài chính", "Financial income"}},
    {"income.other", {"其他收入", "Pendapatan lainnya", "Thu nhập khác", "Other income"}},
    {"expense.people", {"人员费用", "Karyawan", "Nhân sự", "Staff"}},
    {"expense.premises", {"场地与水电", "Tempat usaha dan utilitas", "Mặt bằng và điện nước", "Premises and utilities"}},
    {"expense.goods", {"采购与存货", "Barang dan bahan", "Hàng hóa và vật tư", "Goods and materials"}},
    {"expense.production", {"生产与工程", "Produksi dan konstruksi", "Sản xuất và thi công", "Production and construction"}},
    {"expense.logistics", {"运输与车辆", "Logistik dan kendaraan", "Vận chuyển và xe cộ", "Logistics and vehicles"}},
    {"expense.travel", {"差旅与招待", "Perjalanan dan jamuan", "Công tác và tiếp khách", "Travel and hospitality"}},
    {"expense.marketing", {"市场与销售", "Pemasaran dan penjualan", "Tiếp thị và bán hàng", "Marketing and sales"}},
    {"expense.office", {"办公与信息技术", "Kantor dan TI", "Văn phòng và CNTT", "Office and IT"}},
    {"expense.professional", {"专业服务与合规", "Jasa profesional dan kepatuhan", "Dịch vụ chuyên môn và pháp lý", "Professional services and compliance"}},
    {"expense.finance", {"税费与财务", "Pajak dan keuangan", "Thuế và tài chính", "Taxes and finance"}},
    {"expense.sector", {"餐饮、医疗与教育", "Makanan, kesehatan, dan pendidikan", "Ăn uống, y tế và giáo dục", "Food, health and education"}},
    {"expense.other", {"其他支出", "Pengeluaran lainnya", "Chi phí khác", "Other expenses"}},
    // clang-format on
};

}

std::span<const EnterpriseCategoryGroup> EnterpriseCategoryPresets::groups()
{
    return rows;
}
