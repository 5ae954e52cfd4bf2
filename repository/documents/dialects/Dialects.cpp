#include "repository/documents/dialects/Dialects.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/DesktopSpelling.h"
#include "repository/documents/dialects/GitSpelling.h"
#include "repository/documents/dialects/JoinedSpelling.h"
#include "repository/documents/dialects/Krb5Spelling.h"
#include "repository/documents/dialects/MysqlSpelling.h"
#include "repository/documents/dialects/PhpSpelling.h"
#include "repository/documents/dialects/PropertiesSpelling.h"

#include <algorithm>
#include <iterator>

namespace Repository::Documents {

namespace {

using Continuation = Dialect::Continuation;
using Keys = Dialect::Keys;
using Sections = Dialect::Sections;

Dialect named(std::string_view format, std::string_view name, const char* title)
{
    Dialect row;
    row.format = format;
    row.name = name;
    row.title = title;
    return row;
}

Dialect git()
{
    Dialect row = named("ini", "git", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a git configuration"));
    row.names = ".gitconfig .gitmodules gitconfig *.gitconfig .git/config git/config modules/*/config";
    row.firstSections = "remote \"*\"|branch \"*\"|submodule \"*\"|url \"*\"|includeIf \"*\"|filter \"*\"";
    row.signs = "repositoryformatversion*=*|[[]remote \"*\"[]]|[[]branch \"*\"[]]|[[]submodule \"*\"[]]";
    row.continuation = Continuation::Backslash;
    row.sections = Sections::Subsection;
    row.keys = Keys::IgnoreCase;
    row.commentsAfter = "#;";
    row.quotes = "\"";
    row.escapesOutsideQuotes = true;
    row.bareKeys = Dialect::BareKeys::True;
    row.separator = " = ";
    row.indent = "\t";
    row.spelling = &gitSpelling;
    return row;
}

Dialect desktop()
{
    Dialect row = named("ini", "desktop", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a desktop entry"));
    row.names = "*.desktop *.directory *.theme dbus-1/*.service dbus-1/*/*.service";
    row.firstSections = "Desktop Entry|Desktop Action *|Icon Theme|D-BUS Service";
    row.needsSections = true;
    row.comments = "#";
    row.keepsTrailingBlanks = true;
    row.spelling = &desktopSpelling;
    return row;
}

Dialect keyfile()
{
    Dialect row = desktop();
    row.name = "keyfile";
    row.title = QT_TRANSLATE_NOOP("FrameworkCore::Values", "a GLib key file");
    row.names =
        "*.nmconnection *.flatpakref *.flatpakrepo NetworkManager/*.conf NetworkManager/conf.d/*.conf";
    row.firstSections = {};
    return row;
}

Dialect systemd()
{
    Dialect row = named("ini", "systemd", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a systemd file"));
    row.names =
        "*.service *.socket *.target *.timer *.mount *.automount *.swap *.path *.slice *.scope *.link "
        "*.netdev *.network *.nspawn *.container *.pod *.kube systemd/*.conf systemd/*.conf.d/*.conf "
        "systemd/*/*.d/*.conf";
    row.firstSections = "Unit|Service|Socket|Timer|Mount|Automount|Swap|Slice|Scope|Install|Match|NetDev|"
                        "Manager|Journal|Container|Pod|Kube";
    row.continuation = Continuation::Backslash;
    row.commentsBetweenLines = true;
    row.spelling = &systemdSpelling;
    return row;
}

Dialect kde()
{
    Dialect row = named("ini", "kde", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a KConfig file"));
    row.names = "kdeglobals *.notifyrc *.knsrc *.themerc *.colors";
    row.firstSections = "$Version|*][*|$i";
    row.signs = "[[]*[]][[]*[]]|*[[]$[eid]*[]]*=*";
    row.sections = Sections::Chain;
    row.comments = "#";
    row.hasKeyMarks = true;
    row.spelling = &kdeSpelling;
    return row;
}

Dialect samba()
{
    Dialect row = named("ini", "samba", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a Samba configuration"));
    row.names = "smb.conf smb.conf.* samba/*.conf";
    row.signs = "workgroup*=*|server string*=*|netbios name*=*|idmap config*=*|guest ok*=*|browseable*=*";
    row.continuation = Continuation::AnyBackslash;
    row.keys = Keys::IgnoreCaseAndBlanks;
    row.separator = " = ";
    row.indent = "   ";
    row.spelling = &sambaSpelling;
    return row;
}

Dialect mysql()
{
    Dialect row = named("ini", "mysql", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a MySQL option file"));
    row.names = "my.cnf .my.cnf my.ini mysql/*.cnf mysql/*/*.cnf mariadb.conf.d/*.cnf mysql.conf.d/*.cnf";
    row.firstSections =
        "client-server|client-mariadb|mysqld|mysqld_safe|mysqld_multi|mysqldump|mysqld-*|mariadb-*";
    row.signs = "!include /*|!includedir /*";
    row.needsSections = true;
    row.keys = Keys::DashIsUnderscore;
    row.skipped = "!";
    row.commentsAfter = "#";
    row.quotes = "\"'";
    row.longestLine = 4094;
    row.separator = " = ";
    row.spelling = &mysqlSpelling;
    return row;
}

Dialect php()
{
    Dialect row = named("ini", "php", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a php.ini"));
    row.names =
        "php.ini php-*.ini php.ini-* php/*.ini php/*/*.ini php*/conf.d/*.ini php/*/*/*.ini php/*/*/*/*.ini";
    row.firstSections = "PHP|PATH=*|HOST=*";
    row.signs = "zend_extension*=*";
    row.comments = ";";
    row.commentsAfter = ";";
    row.quotes = "\"'";
    row.quotesRunOn = true;
    row.separator = " = ";
    row.spelling = &phpSpelling;
    return row;
}

Dialect python()
{
    Dialect row = named("ini", "python", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a configparser file"));
    row.names =
        "setup.cfg tox.ini .flake8 .pylintrc pylintrc .pypirc pytest.ini mypy.ini .coveragerc .isort.cfg "
        "pip.conf alembic.ini odoo.conf mopidy.conf offlineimaprc .offlineimaprc .boto";
    row.firstSections = "tool:*|bdist_wheel|egg_info|testenv|tox|flake8|DEFAULT";
    row.needsSections = true;
    row.continuation = Continuation::Indentation;
    row.sections = Sections::Nested;
    row.keys = Keys::IgnoreCase;
    row.separators = "=:";
    row.separator = " = ";
    row.spelling = &pythonSpelling;
    return row;
}

// Of programs that have configparser take comments after values.
Dialect commentedPython(std::string_view name, const char* title)
{
    Dialect row = python();
    row.name = name;
    row.title = title;
    row.sections = Sections::Flat;
    row.commentsAfter = ";";
    row.spelling = &commentedPythonSpelling;
    return row;
}

Dialect fail2ban()
{
    Dialect row =
        commentedPython("fail2ban", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a fail2ban configuration"));
    row.names = "fail2ban/*.conf fail2ban/*.local fail2ban/*/*.conf fail2ban/*/*.local jail.conf jail.local";
    row.firstSections = "INCLUDES|Definition";
    return row;
}

Dialect ansible()
{
    Dialect row =
        commentedPython("ansible", QT_TRANSLATE_NOOP("FrameworkCore::Values", "an Ansible configuration"));
    row.names = "ansible.cfg .ansible.cfg";
    row.firstSections = {};
    return row;
}

Dialect supervisor()
{
    Dialect row = commentedPython("supervisor",
                                  QT_TRANSLATE_NOOP("FrameworkCore::Values", "a Supervisor configuration"));
    row.names = "supervisord.conf supervisor/conf.d/*.conf";
    row.firstSections = "unix_http_server|inet_http_server|supervisord|program:*|eventlistener:*";
    row.commentsAfter = ";#";
    row.spelling = &supervisorSpelling;
    return row;
}

Dialect editorconfig()
{
    Dialect row =
        named("ini", "editorconfig", QT_TRANSLATE_NOOP("FrameworkCore::Values", "an editorconfig file"));
    row.names = ".editorconfig *.editorconfig";
    row.signs = "indent_style*=*|end_of_line*=*|insert_final_newline*=*";
    row.keys = Keys::IgnoreCase;
    row.separator = " = ";
    row.spelling = &plainSpelling;
    return row;
}

Dialect krb5()
{
    Dialect row = named("ini", "krb5", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a Kerberos profile"));
    row.names = "krb5.conf krb5.conf.* kdc.conf krb5.conf.d/* krb5.ini mke2fs.conf e2fsck.conf";
    row.firstSections = "libdefaults|realms|domain_realm|kdcdefaults|dbmodules";
    row.directives = "include includedir module";
    row.needsSections = true;
    row.hasBraces = true;
    row.longestLine = 2046;
    row.separator = " = ";
    row.indent = "    ";
    row.spelling = &krb5Spelling;
    return row;
}

Dialect properties()
{
    Dialect row = named("txt", "properties", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a properties file"));
    row.names = "*.properties";
    row.continuation = Continuation::Backslash;
    row.sections = Sections::Nested;
    row.separators = "=:";
    row.comments = "#!";
    row.keepsTrailingBlanks = true;
    row.blanksSeparate = true;
    row.bareKeys = Dialect::BareKeys::Empty;
    row.spelling = &propertiesSpelling;
    return row;
}

Dialect generic()
{
    Dialect row = named("ini", "generic", QT_TRANSLATE_NOOP("FrameworkCore::Values", "an ini file"));
    row.continuation = Continuation::Guessed;
    row.sections = Sections::Nested;
    row.separators = "=:";
    row.comments = ";#";
    row.commentsAfter = ";#";
    row.quotes = "\"'";
    return row;
}

Dialect genericTxt()
{
    Dialect row = named("txt", "generic", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a txt file"));
    row.continuation = Continuation::Guessed;
    row.sections = Sections::Nested;
    row.comments = "#!";
    row.separator = " = ";
    return row;
}

using Match = bool (*)(const Dialect& row, std::string_view text);

const Dialect* findRow(std::string_view format, std::string_view text, Match matches)
{
    const auto& rows = getDialects();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Dialect& row) {
        return (format.empty() || row.format == format) && matches(row, text);
    });
    return found == rows.end() ? nullptr : &*found;
}

// Of a glob that does not begin with "*": the characters of which it begins with one, and how much of it they
// are.
struct GlobStep
{
    std::string_view characters;
    std::size_t size;
};

GlobStep firstStepOf(std::string_view glob)
{
    const std::size_t close = glob.front() == '[' ? glob.find(']', 2) : std::string_view::npos;
    const bool isSet = close != std::string_view::npos;
    return {isSet ? glob.substr(1, close - 1) : glob.substr(0, 1), isSet ? close + 1 : 1};
}

// Whether a text that a glob matches may end like this one; most globs of the table end with a letter, by
// which nearly all texts are told apart.
bool mayEndLike(std::string_view glob, std::string_view text)
{
    const char last = glob.empty() ? '*' : glob.back();
    return last == '*' || last == ']' || (!text.empty() && text.back() == last);
}

// The same of how it begins.
bool mayBeginLike(std::string_view glob, std::string_view text)
{
    const char first = glob.empty() ? '*' : glob.front();
    return first == '*' || first == '[' || (!text.empty() && text.front() == first);
}

// "*" is any run of characters, "[...]" one of a set, anything else itself.
bool matchesGlob(std::string_view glob, std::string_view text)
{
    bool hasStar = false;
    std::string_view globAfterStar;
    std::string_view textAfterStar;
    while (true) {
        if (!glob.empty() && glob.front() == '*') {
            hasStar = true;
            glob.remove_prefix(1);
            globAfterStar = glob;
            textAfterStar = text;
            continue;
        }
        if (glob.empty() && text.empty())
            return true;
        if (!glob.empty() && !text.empty()) {
            const GlobStep step = firstStepOf(glob);
            if (step.characters.find(text.front()) != std::string_view::npos) {
                glob.remove_prefix(step.size);
                text.remove_prefix(1);
                continue;
            }
        }
        // The last "*" takes more characters, up to one with which it can go on.
        if (!hasStar || textAfterStar.empty())
            return false;
        const std::size_t next = globAfterStar.empty()
                                     ? textAfterStar.size()
                                     : textAfterStar.find_first_of(firstStepOf(globAfterStar).characters, 1);
        if (next == std::string_view::npos)
            return false;
        textAfterStar.remove_prefix(next);
        glob = globAfterStar;
        text = textAfterStar;
    }
}

bool matchesOne(std::string_view globs, char between, std::string_view text)
{
    while (!globs.empty()) {
        const std::size_t end = std::min(globs.find(between), globs.size());
        const std::string_view glob = globs.substr(0, end);
        if (mayEndLike(glob, text) && matchesGlob(glob, text))
            return true;
        globs.remove_prefix(std::min(end + 1, globs.size()));
    }
    return false;
}

// The last parts of a path, as many as the glob has.
std::string_view endOf(std::string_view path, std::string_view glob)
{
    std::size_t slash = path.size();
    for (auto parts = std::count(glob.begin(), glob.end(), '/') + 1; parts > 0; --parts) {
        slash = slash == 0 ? std::string_view::npos : path.rfind('/', slash - 1);
        if (slash == std::string_view::npos)
            return path;
    }
    return path.substr(slash + 1);
}

std::string_view firstSectionOf(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        const std::string_view content = trimBlanks(line.content);
        const std::size_t close = content.rfind(']');
        if (line.content.substr(0, 1) == "[" && close != std::string_view::npos)
            return content.substr(1, close - 1);
        at = line.end;
    }
    return {};
}

// One glob of a row's signs.
struct Sign
{
    const Dialect* row;
    std::string_view glob;
};

// Of all rows that have some, in their order: thousands of files are told by them.
const std::vector<Sign>& getSigns()
{
    static const std::vector<Sign> signs = [] {
        std::vector<Sign> all;
        for (const Dialect& row : getDialects()) {
            for (std::string_view globs = row.signs; !globs.empty();) {
                const std::size_t end = std::min(globs.find('|'), globs.size());
                all.push_back({&row, globs.substr(0, end)});
                globs.remove_prefix(std::min(end + 1, globs.size()));
            }
        }
        return all;
    }();
    return signs;
}

// The first row that takes some line for one of its own.
const Dialect* findSign(std::string_view format, std::string_view text)
{
    std::vector<Sign> signs;
    std::copy_if(getSigns().begin(), getSigns().end(), std::back_inserter(signs),
                 [format](const Sign& sign) { return format.empty() || sign.row->format == format; });
    auto found = signs.end();
    for (std::size_t at = 0; at < text.size() && found != signs.begin();) {
        const TextLine line = textLineAt(text, at);
        const std::string_view content = trimBlanks(line.content);
        found = std::find_if(signs.begin(), found, [content](const Sign& sign) {
            return mayBeginLike(sign.glob, content) && matchesGlob(sign.glob, content);
        });
        at = line.end;
    }
    return found == signs.end() ? nullptr : found->row;
}

bool hasName(const Dialect& row, std::string_view path)
{
    std::string_view globs = row.names;
    while (!globs.empty()) {
        const std::size_t end = std::min(globs.find(' '), globs.size());
        const std::string_view glob = globs.substr(0, end);
        if (mayEndLike(glob, path) && matchesGlob(glob, endOf(path, glob)))
            return true;
        globs.remove_prefix(std::min(end + 1, globs.size()));
    }
    return false;
}

} // namespace

const std::vector<Dialect>& getDialects()
{
    static const std::vector<Dialect> rows{git(),        desktop(),      keyfile(), systemd(),  kde(),
                                           samba(),      mysql(),        php(),     fail2ban(), ansible(),
                                           supervisor(), editorconfig(), krb5(),    python(),   properties(),
                                           generic(),    genericTxt()};
    return rows;
}

const Dialect* findDialect(std::string_view format, std::string_view name)
{
    return findRow(format, name, [](const Dialect& row, std::string_view text) { return row.name == text; });
}

const Dialect& getGenericDialect(std::string_view format)
{
    return *findDialect(format, "generic");
}

const Dialect* recogniseName(std::string_view format, std::string_view path)
{
    return findRow(format, path, hasName);
}

const Dialect* recogniseText(std::string_view format, std::string_view beginning)
{
    const bool hasDialects = format.empty() || findDialect(format, "generic");
    if (!hasDialects)
        return nullptr;
    const Dialect* const bySection =
        findRow(format, firstSectionOf(beginning), [](const Dialect& row, std::string_view section) {
            return !section.empty() && matchesOne(row.firstSections, '|', section);
        });
    return bySection ? bySection : findSign(format, beginning);
}

} // namespace Repository::Documents
