#include "LedgerUI/Presentation/Workspace/RoleText.h"

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Words.h"

const WordTable& roleWords()
{
    static const WordTable words{
        {"owner", "所有者", "Pemilik", "Chủ sở hữu", "Owner"},
        {"admin", "管理员", "Admin", "Quản trị viên", "Administrator"},
        {"finance", "财务", "Keuangan", "Tài chính", "Finance"},
        {"partner", "合伙人", "Mitra", "Đối tác", "Partner"},
        {"employee", "员工", "Karyawan", "Nhân viên", "Employee"},
    };
    return words;
}

QString roleText(std::string_view role, std::string_view locale)
{
    return wordIn(locale, roleWords(), role);
}
