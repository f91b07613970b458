#include "LedgerUI/Presentation/Imports/ImportWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& importWords()
{
    static const WordTable words{{
        {"action", "导入…", "Impor…", "Nhập…", "Import…"},
        {"title", "导入历史记录", "Impor catatan lama", "Nhập các bút toán cũ", "Import historical records"},

        // the file
        {"drop", "将 CSV 文件拖到此处，或选择文件。", "Letakkan berkas CSV di sini, atau pilih berkas.",
         "Thả tệp CSV vào đây hoặc chọn tệp.", "Drop a CSV file here, or choose one."},
        {"choose", "选择文件…", "Pilih berkas…", "Chọn tệp…", "Choose a file…"},
        {"chooseAnother", "选择其他文件…", "Pilih berkas lain…", "Chọn tệp khác…", "Choose another file…"},
        {"chooseDialog", "选择要导入的文件", "Pilih berkas yang akan diimpor", "Chọn tệp để nhập",
         "Choose the file to import"},
        {"size", "%1 KB，%2 行数据", "%1 KB, %2 baris data", "%1 KB, %2 dòng dữ liệu", "%1 KB, %2 data rows"},
        {"reading", "正在检查文件…", "Memeriksa berkas…", "Đang kiểm tra tệp…", "Checking the file…"},
        {"unreadable", "无法读取该文件。", "Berkas tidak dapat dibaca.", "Không đọc được tệp.",
         "The file could not be read."},
        {"limits", "最大 5 MB，UTF-8", "Paling besar 5 MB, UTF-8", "Tối đa 5 MB, UTF-8", "At most 5 MB, UTF-8"},
        {"template", "保存模板…", "Simpan templat…", "Lưu tệp mẫu…", "Save the template…"},

        // how rows are read
        {"guide", "各行的填写方法", "Cara mengisi baris", "Cách điền các dòng", "How rows are read"},
        {"guide.entry", "收入/支出：填写账户、币种、金额和分类；三个目标列都留空。",
         "Pemasukan/Pengeluaran: isi rekening, mata uang, jumlah, dan kategori; kosongkan ketiga kolom tujuan.",
         "Thu/Chi: nhập tài khoản, loại tiền, số tiền và hạng mục; để trống cả ba cột đích.",
         "Income/Expense: enter account, currency, amount and category; leave all three target columns blank."},
        {"guide.transfer", "内部划拨：填写币种相同的来源账户和目标账户；目标币种和目标金额留空。",
         "Transfer Internal: isi rekening asal dan tujuan dengan mata uang yang sama; kosongkan mata uang dan jumlah "
         "tujuan.",
         "Chuyển nội bộ: nhập tài khoản nguồn và đích cùng loại tiền; để trống loại tiền đích và số tiền đích.",
         "Internal Transfer: enter source and target accounts using the same currency; leave target currency and "
         "target amount blank."},
        {"guide.exchange", "换汇：填写来源账户和金额、目标账户和币种，以及实际收到的金额。",
         "Penukaran Mata Uang: isi rekening asal dan jumlahnya, rekening tujuan dan mata uangnya, serta jumlah yang "
         "benar-benar diterima.",
         "Đổi tiền: nhập tài khoản nguồn và số tiền, tài khoản đích và loại tiền, cùng số tiền thực nhận.",
         "Currency Exchange: enter source account and amount, target account and currency, and the amount actually "
         "received."},
        {"guide.opening", "期初余额仅用于使用 Brightbook 之前已持有的资金，不属于营业收入。",
         "Saldo Awal hanya untuk dana yang sudah dimiliki sebelum memakai Brightbook dan bukan pendapatan usaha.",
         "Số dư đầu kỳ chỉ dành cho tiền đã có trước khi dùng Brightbook và không phải doanh thu.",
         "Opening Balance is only for funds held before using Brightbook and is not operating income."},
        {"guide.start", "若尚未确认记账起始日期，请先导入较早的记录，再将起始日期设为最早一条记录的日期。",
         "Bila tanggal mulai pembukuan belum dikonfirmasi, impor catatan lama dulu, lalu tetapkan tanggal mulai pada "
         "tanggal catatan paling awal.",
         "Nếu chưa xác nhận ngày bắt đầu ghi sổ, hãy nhập các bút toán cũ trước, rồi đặt ngày bắt đầu theo ngày của "
         "bút toán sớm nhất.",
         "If the bookkeeping start date is not confirmed, import older records first, then set the start date to the "
         "earliest record date."},

        // what was found
        {"issues.one", "发现 1 个问题；未写入任何数据", "1 masalah ditemukan; tidak ada data yang ditulis",
         "Phát hiện 1 lỗi; chưa ghi dữ liệu nào", "1 issue found; no data has been written"},
        {"issues.many", "发现 %1 个问题；未写入任何数据", "%1 masalah ditemukan; tidak ada data yang ditulis",
         "Phát hiện %1 lỗi; chưa ghi dữ liệu nào", "%1 issues found; no data has been written"},
        {"issuesMore.one", "还有 1 个问题", "dan 1 masalah lagi", "và 1 lỗi nữa", "and 1 more issue"},
        {"issuesMore.many", "还有 %1 个问题", "dan %1 masalah lagi", "và %1 lỗi nữa", "and %1 more issues"},
        {"issueList", "问题", "Masalah", "Lỗi", "Issues"},
        {"line", "行", "Baris", "Dòng", "Line"},
        {"column", "列", "Kolom", "Cột", "Column"},
        {"value", "文件中的值", "Isi dalam berkas", "Giá trị trong tệp", "Value in file"},
        {"issue", "问题", "Masalah", "Lỗi", "Issue"},
        {"copyIssues", "复制问题", "Salin masalah", "Sao chép lỗi", "Copy issues"},
        {"saveIssues", "保存带问题列的文件…", "Simpan berkas dengan masalahnya…", "Lưu tệp kèm cột lỗi…",
         "Save the file with its issues…"},

        // what to do about it
        {"do.encoding", "请在表格软件中将文件另存为“CSV UTF-8”。", "Simpan lagi berkas itu sebagai “CSV UTF-8”.",
         "Hãy lưu lại tệp dưới dạng “CSV UTF-8”.", "Save the file again as “CSV UTF-8”."},
        {"do.csv", "请在表格软件中重新另存为 CSV；单元格内的引号要写两次。",
         "Simpan lagi dari lembar kerja sebagai CSV; tanda kutip di dalam sel ditulis dua kali.",
         "Hãy lưu lại từ bảng tính dưới dạng CSV; dấu ngoặc kép trong ô phải viết hai lần.",
         "Save it again from the spreadsheet as CSV; a quotation mark inside a cell is written twice."},
        {"do.header", "请从模板复制第一行。", "Salin baris pertama dari templat.", "Hãy chép dòng đầu từ tệp mẫu.",
         "Copy the first row from the template."},
        {"do.separator", "请在表格软件中选择逗号作为分隔符。", "Pilih koma sebagai pemisah di lembar kerja.",
         "Hãy chọn dấu phẩy làm dấu ngăn cách trong bảng tính.", "Choose the comma as separator in the spreadsheet."},
        {"do.fileSize", "请把文件分成几个较小的文件。", "Bagi berkas menjadi beberapa berkas yang lebih kecil.",
         "Hãy chia tệp thành vài tệp nhỏ hơn.", "Divide it into smaller files."},
        {"do.columns", "请保留模板的所有列；含逗号的单元格要加引号。",
         "Pertahankan semua kolom templat; beri tanda kutip pada sel yang memuat koma.",
         "Hãy giữ đủ các cột của tệp mẫu; ô có dấu phẩy phải đặt trong ngoặc kép.",
         "Keep all columns of the template, and put quotation marks around a cell that holds a comma."},
        {"do.date", "请写成 2026-01-31 这样的形式。", "Tulis seperti 2026-01-31.", "Hãy viết như 2026-01-31.",
         "Write it like 2026-01-31."},
        {"do.beforeStart", "请删除此行；更早的资金已包含在期初余额中。",
         "Hapus baris ini; dana sebelum itu sudah termasuk dalam saldo awal.",
         "Hãy bỏ dòng này; tiền trước ngày đó đã nằm trong số dư đầu kỳ.",
         "Take the row out; money from before that day belongs to the opening balance."},
        {"do.dateOrder", "请把此行移到它的日期所在的位置。", "Pindahkan baris ini ke tempatnya menurut tanggal.",
         "Hãy chuyển dòng này về đúng chỗ theo ngày.", "Move the row to its place by date."},
        {"do.type", "请填写 income、expense、transfer、exchange 或 opening。",
         "Tulis income, expense, transfer, exchange, atau opening.",
         "Hãy viết income, expense, transfer, exchange hoặc opening.",
         "Write income, expense, transfer, exchange or opening."},
        {"do.account", "请与账户页上的名称完全一致；已归档的账户不能再记账。",
         "Tulis namanya persis seperti di halaman rekening; rekening yang diarsipkan tidak menerima catatan.",
         "Hãy viết đúng tên như trên trang tài khoản; tài khoản đã lưu trữ không nhận bút toán.",
         "Write the name exactly as on the accounts page; an archived account takes no entries."},
        {"do.currency", "请填写该账户持有的币种代码，例如 IDR。",
         "Tulis kode mata uang yang dimiliki rekening itu, misalnya IDR.",
         "Hãy viết mã loại tiền mà tài khoản đó có, ví dụ IDR.",
         "Write the code of a currency that it holds, such as IDR."},
        {"do.amount", "请用小数点，不要千位分隔符，例如 1250000.50。",
         "Tulis dengan titik desimal dan tanpa pemisah ribuan, misalnya 1250000.50.",
         "Hãy dùng dấu chấm thập phân và không ngăn cách hàng nghìn, ví dụ 1250000.50.",
         "Write it with a decimal point and without separators of thousands, such as 1250000.50."},
        {"do.category", "请填写类别列表中的名称，或“上级 / 下级”；收入行用收入类别，支出行用支出类别。",
         "Tulis nama dari daftar kategori, atau “Induk / Anak”; kategori pemasukan untuk pemasukan, pengeluaran untuk "
         "pengeluaran.",
         "Hãy viết tên trong danh sách hạng mục, hoặc “Cha / Con”; dòng thu dùng hạng mục thu, dòng chi dùng hạng mục "
         "chi.",
         "Write a name from the list of categories, or “Parent / Child”; income takes categories of income, expense "
         "those of expense."},
        {"do.permission", "请让管理员授予此账户的记账权限，或把此行交给有权限的人导入。",
         "Mintalah hak mencatat pada rekening ini, atau serahkan baris ini kepada yang berhak.",
         "Hãy xin quyền ghi trên tài khoản này, hoặc để người có quyền nhập dòng này.",
         "Ask for the right to record on this account, or leave the row to somebody who has it."},
        {"do.targetAccount", "划拨和换汇在此填写另一个账户；其他行留空。",
         "Transfer dan penukaran menyebut rekening lain di sini; baris lain dikosongkan.",
         "Chuyển nội bộ và đổi tiền ghi tài khoản khác ở đây; các dòng khác để trống.",
         "Transfers and exchanges name another account here; other rows leave it blank."},
        {"do.sameAccount", "请填写另一个账户。", "Tulis rekening lain.", "Hãy viết tài khoản khác.",
         "Write another account."},
        {"do.targetCurrency", "只有换汇在此填写另一种币种；其他行留空。",
         "Hanya penukaran yang menyebut mata uang lain di sini; baris lain dikosongkan.",
         "Chỉ đổi tiền ghi loại tiền khác ở đây; các dòng khác để trống.",
         "Only an exchange names another currency here; other rows leave it blank."},
        {"do.targetAmount", "只有换汇在此填写实际收到的金额；其他行留空。",
         "Hanya penukaran yang menyebut jumlah yang diterima di sini; baris lain dikosongkan.",
         "Chỉ đổi tiền ghi số tiền thực nhận ở đây; các dòng khác để trống.",
         "Only an exchange names the amount received here; other rows leave it blank."},
        {"do.refused", "请更正此行或将其删除。", "Perbaiki baris ini atau hapus.", "Hãy sửa dòng này hoặc bỏ đi.",
         "Correct the row or take it out."},

        {"ready.one", "1 条记录可以导入", "1 catatan siap diimpor", "1 bút toán sẵn sàng nhập",
         "1 record is ready to import"},
        {"ready.many", "%1 条记录可以导入", "%1 catatan siap diimpor", "%1 bút toán sẵn sàng nhập",
         "%1 records are ready to import"},
        {"recorded.one", "其中 1 条已经记录过，不会重复。", "1 di antaranya sudah tercatat dan tidak akan digandakan.",
         "1 bút toán trong số đó đã được ghi và sẽ không bị ghi trùng.",
         "1 of them is recorded already and will not be duplicated."},
        {"recorded.many", "其中 %1 条已经记录过，不会重复。",
         "%1 di antaranya sudah tercatat dan tidak akan digandakan.",
         "%1 bút toán trong số đó đã được ghi và sẽ không bị ghi trùng.",
         "%1 of them are recorded already and will not be duplicated."},
        {"entryList", "将要记录的内容", "Yang akan dicatat", "Sẽ được ghi", "What will be recorded"},
        {"date", "日期", "Tanggal", "Ngày", "Date"},
        {"entry", "记录", "Catatan", "Bút toán", "Entry"},
        {"account", "账户", "Rekening", "Tài khoản", "Account"},
        {"amount", "金额", "Jumlah", "Số tiền", "Amount"},
        {"already", "已记录", "Sudah tercatat", "Đã ghi", "Recorded already"},
        {"effectList", "余额变化", "Perubahan saldo", "Thay đổi số dư", "Effect on balances"},
        {"before", "导入前", "Sebelum", "Trước", "Before"},
        {"after", "导入后", "Sesudah", "Sau", "After"},

        // sending
        {"start.one", "导入 1 条记录", "Impor 1 catatan", "Nhập 1 bút toán", "Import 1 record"},
        {"start.many", "导入 %1 条记录", "Impor %1 catatan", "Nhập %1 bút toán", "Import %1 records"},
        {"confirm", "导入历史记录？", "Impor catatan lama?", "Nhập các bút toán cũ?", "Import historical records?"},
        {"confirmText", "记录一经写入便不能编辑，只能冲销。",
         "Catatan yang sudah ditulis tidak dapat diubah, hanya dibatalkan.",
         "Bút toán đã ghi không thể sửa, chỉ có thể đảo.", "What is recorded cannot be edited, only reversed."},
        {"changedMeanwhile", "账本刚刚有变化。请再看一遍，然后重新开始。",
         "Pembukuan baru saja berubah. Periksa lagi, lalu mulai sekali lagi.",
         "Sổ sách vừa thay đổi. Hãy xem lại rồi bắt đầu lần nữa.",
         "The books have just changed. Look at it once more, then start again."},
        {"notYet", "暂不导入", "Jangan dulu", "Để sau", "Not yet"},
        {"progress", "已确认 %1 / %2 条记录", "%1 / %2 catatan dikonfirmasi", "Đã xác nhận %1 / %2 bút toán",
         "%1 / %2 records confirmed"},
        {"progressHint", "记录按顺序逐条写入。若中断，请再次选择同一文件；已确认的行不会重复记录。",
         "Catatan ditulis berurutan, satu per satu. Bila terhenti, pilih lagi berkas yang sama; baris yang sudah "
         "dikonfirmasi tidak akan digandakan.",
         "Các bút toán được ghi theo thứ tự, từng dòng một. Nếu bị gián đoạn, hãy chọn lại chính tệp này; các dòng đã "
         "xác nhận sẽ không bị ghi trùng.",
         "Records are written in order, one by one. If it is interrupted, choose the same file again; confirmed rows "
         "will not be duplicated."},
        {"stop", "停止", "Hentikan", "Dừng", "Stop"},
        {"stopping", "正在停止…", "Menghentikan…", "Đang dừng…", "Stopping…"},
        {"done.one", "已成功导入 1 条记录。", "1 catatan berhasil diimpor.", "Đã nhập thành công 1 bút toán.",
         "1 record imported successfully."},
        {"done.many", "已成功导入 %1 条记录。", "%1 catatan berhasil diimpor.", "Đã nhập thành công %1 bút toán.",
         "%1 records imported successfully."},
        {"stopped.one", "导入在确认 1 条记录后停止。解决问题后可再次选择同一文件；已确认的行不会重复。",
         "Impor berhenti setelah 1 catatan dikonfirmasi. Setelah masalahnya diperbaiki Anda dapat memilih berkas yang "
         "sama lagi; baris yang sudah dikonfirmasi tidak akan digandakan.",
         "Đã dừng nhập sau 1 bút toán được xác nhận. Bạn có thể chọn lại chính tệp này sau khi khắc phục; các dòng đã "
         "xác nhận sẽ không bị trùng.",
         "Import stopped after 1 confirmed record. You can select the same file again after fixing the issue; "
         "confirmed rows will not be duplicated."},
        {"stopped.many", "导入在确认 %1 条记录后停止。解决问题后可再次选择同一文件；已确认的行不会重复。",
         "Impor berhenti setelah %1 catatan dikonfirmasi. Setelah masalahnya diperbaiki Anda dapat memilih berkas yang "
         "sama lagi; baris yang sudah dikonfirmasi tidak akan digandakan.",
         "Đã dừng nhập sau %1 bút toán được xác nhận. Bạn có thể chọn lại chính tệp này sau khi khắc phục; các dòng đã "
         "xác nhận sẽ không bị trùng.",
         "Import stopped after %1 confirmed records. You can select the same file again after fixing the issue; "
         "confirmed rows will not be duplicated."},
    }};
    return words;
}
