#include "LedgerUI/Presentation/Text/KeyWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& keyWords()
{
    static const WordTable words{
        {"title", "键盘快捷键", "Pintasan papan tik", "Phím tắt", "Keyboard"},
        {"everywhere", "随处可用", "Di mana saja", "Ở mọi nơi", "Everywhere"},
        {"ledger", "账本", "Buku besar", "Sổ cái", "Ledger"},
        {"form", "表单", "Formulir", "Biểu mẫu", "Forms"},
        {"help", "显示所有快捷键", "Tampilkan semua pintasan", "Hiện tất cả phím tắt", "Show all keys"},
        {"pressFocused", "按下当前按钮", "Tekan tombol yang terpilih", "Bấm nút đang chọn", "Press the focused button"},
        {"leave", "关闭、停止或清空搜索", "Tutup, hentikan, atau kosongkan pencarian", "Đóng, dừng hoặc xóa ô tìm kiếm",
         "Close, stop, or clear the search"},
        {"pages", "打开侧边栏中的第 1 至第 6 页", "Buka halaman ke-1 sampai ke-6 di bilah sisi",
         "Mở trang 1 đến 6 ở thanh bên", "Open page 1 to 6 of the side bar"},
        {"refresh", "刷新", "Segarkan", "Làm mới", "Refresh"},
        {"companies", "切换公司", "Ganti perusahaan", "Chuyển công ty", "Switch the company"},
        {"settings", "设置", "Pengaturan", "Cài đặt", "Settings"},
        {"print", "打印或存为 PDF", "Cetak atau simpan sebagai PDF", "In hoặc lưu thành PDF", "Print or save as PDF"},
        {"nextPane", "下一个区域", "Panel berikutnya", "Vùng tiếp theo", "Next pane"},
        {"previousPane", "上一个区域", "Panel sebelumnya", "Vùng trước", "Previous pane"},
        {"newEntry", "新建记录", "Catatan baru", "Bút toán mới", "New entry"},
        {"newIncome", "新建收入", "Pemasukan baru", "Khoản thu mới", "New income"},
        {"newTransfer", "新建内部划拨", "Transfer baru", "Chuyển nội bộ mới", "New transfer"},
        {"newExchange", "新建换汇", "Penukaran baru", "Đổi ngoại tệ mới", "New exchange"},
        {"search", "搜索", "Cari", "Tìm kiếm", "Search"},
        {"previousPeriod", "上一期间", "Periode sebelumnya", "Kỳ trước", "Previous period"},
        {"nextPeriod", "下一期间", "Periode berikutnya", "Kỳ sau", "Next period"},
        {"openPeriod", "选择期间", "Pilih periode", "Chọn kỳ", "Choose the period"},
        {"jumpToDay", "转到某一天", "Buka suatu tanggal", "Đến một ngày", "Go to a day"},
        {"toggleDetail", "显示或隐藏详情", "Tampilkan atau sembunyikan rincian", "Hiện hoặc ẩn chi tiết",
         "Show or hide the detail"},
        {"clearFilters", "清除搜索、筛选和期间", "Hapus pencarian, filter, dan periode", "Xóa tìm kiếm, bộ lọc và kỳ",
         "Clear search, filters and period"},
        {"sortNext", "按下一列排序", "Urutkan menurut kolom berikutnya", "Sắp xếp theo cột kế tiếp",
         "Sort by the next column"},
        {"turnSort", "反转排序", "Balik urutan", "Đảo thứ tự", "Turn the order around"},
        {"openRow", "打开所选记录的详情", "Buka rincian catatan terpilih", "Mở chi tiết bút toán đang chọn",
         "Open the detail of the chosen entry"},
        {"copyRows", "复制所选记录", "Salin catatan terpilih", "Sao chép các bút toán đang chọn",
         "Copy the chosen entries"},
        {"exportRows", "导出账本或报表", "Ekspor buku besar atau laporan", "Xuất sổ cái hoặc báo cáo",
         "Export the ledger or the report"},
        {"confirmForm", "提交表单", "Kirim formulir", "Xác nhận biểu mẫu", "Confirm the form"},
        {"confirmAndNew", "保存并新建下一笔", "Simpan dan buat catatan baru", "Lưu và thêm bút toán mới",
         "Save and begin a new entry"},
    };
    return words;
}
