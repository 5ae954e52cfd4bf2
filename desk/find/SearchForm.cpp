#include "desk/find/SearchForm.h"

#include "desk/find/SearchHistory.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/ScopedSignalBlocker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

SearchForm::SearchForm(SearchScope& searchScope, QWidget* parent) : QWidget(parent), scope(searchScope)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(makeTextRow());
    fault = new PlainLabel;
    fault->setObjectName(QStringLiteral("findFault"));
    fault->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    fault->hide();
    column->addWidget(fault);
    replacement = makeReplacement();
    column->addWidget(replacement);
    switches = makeFieldRow();
    column->addLayout(switches);
    setTabOrder(text, replacement);
    fillHistory();
}

QHBoxLayout* SearchForm::makeTextRow()
{
    text = new QComboBox;
    text->setObjectName(QStringLiteral("findText"));
    text->setAccessibleName(tr("Text to find"));
    text->setEditable(true);
    text->setInsertPolicy(QComboBox::NoInsert);
    text->setCompleter(nullptr);
    text->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    text->setMinimumContentsLength(16);
    text->lineEdit()->setPlaceholderText(tr("Text to find"));
    text->lineEdit()->setClearButtonEnabled(true);
    text->installEventFilter(this); // which has the keys of its line
    connect(text, &QComboBox::editTextChanged, this, &SearchForm::changed);
    connect(text, QOverload<int>::of(&QComboBox::activated), this, &SearchForm::takeFromHistory);

    syntax = new QComboBox;
    syntax->setObjectName(QStringLiteral("findSyntax"));
    syntax->setAccessibleName(tr("How the text is meant"));
    syntax->addItems({tr("Plain text"), tr("Wildcard *"), tr("Regular expression")}); // as the enumeration
    connect(syntax, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &SearchForm::changed);

    auto* const row = new QHBoxLayout;
    row->addWidget(text, 1);
    row->addWidget(syntax);
    matchCase = makeBox(tr("Match case"), "findCase", false);
    whole = makeBox(tr("Whole &text"), "findWhole", false);
    row->addWidget(matchCase);
    row->addWidget(whole);
    return row;
}

QHBoxLayout* SearchForm::makeFieldRow()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(new PlainLabel(tr("Look in:")));
    const auto add = [this, row](SearchQuery::Field field, const QString& label, const char* name,
                                 bool isChecked) {
        fields.append({field, makeBox(label, name, isChecked)});
        row->addWidget(fields.last().second);
    };
    add(SearchQuery::Name, tr("&names"), "findNames", true);
    add(SearchQuery::Path, tr("&paths"), "findPaths", false);
    add(SearchQuery::Value, tr("val&ues"), "findValues", true);
    add(SearchQuery::Type, tr("t&ypes"), "findTypes", false);
    row->addSpacing(12);
    row->addWidget(new PlainLabel(tr("of:")));
    row->addWidget(&scope);
    connect(&scope, &SearchScope::changed, this, &SearchForm::changed);
    return row;
}

QLineEdit* SearchForm::makeReplacement()
{
    auto* const line = new QLineEdit;
    line->setObjectName(QStringLiteral("findReplacement"));
    line->setPlaceholderText(tr("Replace by"));
    line->setAccessibleName(line->placeholderText());
    line->setToolTip(
        tr("With a regular expression, \\1 to \\9 are what its groups have matched, and \\0 is all of it"));
    line->installEventFilter(this);
    line->hide();
    connect(line, &QLineEdit::textChanged, this, &SearchForm::changed);
    return line;
}

QCheckBox* SearchForm::makeBox(const QString& label, const char* name, bool isChecked)
{
    auto* const box = new QCheckBox(label);
    box->setObjectName(QLatin1String(name));
    box->setChecked(isChecked);
    connect(box, &QCheckBox::toggled, this, &SearchForm::changed);
    return box;
}

SearchForm::SearchQuery SearchForm::getQuery() const
{
    SearchQuery query;
    query.text = text->currentText();
    query.syntax = SearchQuery::Syntax(syntax->currentIndex());
    query.caseSensitivity = matchCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    query.isWhole = whole->isChecked();
    query.fields = {};
    for (const auto& [field, box] : fields)
        query.fields.setFlag(field, box->isChecked());
    if (replacing) {
        query.fields = SearchQuery::Value;
        query.replacement = replacement->text();
    }
    query.roots = scope.getRoots();
    return query;
}

void SearchForm::setReplacing(bool isOne)
{
    if (replacing == isOne)
        return;
    replacing = isOne;
    replacement->setVisible(isOne);
    for (const auto& field : qAsConst(fields))
        field.second->setEnabled(!isOne);
    emit changed();
}

void SearchForm::beginEntry()
{
    text->setFocus();
    text->lineEdit()->selectAll();
}

void SearchForm::showFault(const std::optional<PatternFault>& found)
{
    fault->setVisible(found.has_value());
    if (!found)
        return;
    constexpr int mostShown = 60;
    const int begin = std::max(0, found->offset - mostShown);
    QString shown = text->currentText().mid(begin, 2 * mostShown);
    shown.replace(QLatin1Char('\t'), QLatin1Char(' '));
    fault->setText(shown + QLatin1Char('\n') + QString(found->offset - begin, QLatin1Char(' ')) +
                   QLatin1String("^ ") + found->reason);
}

void SearchForm::append(QWidget& widget, int stretch)
{
    switches->addWidget(&widget, stretch);
}

void SearchForm::remember()
{
    const SearchQuery query = getQuery();
    if (query.text.isEmpty())
        return;
    SearchHistory::add(query);
    fillHistory();
}

void SearchForm::fillHistory()
{
    const Utilities::ScopedSignalBlocker blocker(text);
    const QString entered = text->currentText();
    text->clear();
    const auto searches = SearchHistory::get();
    for (const SearchQuery& query : searches)
        text->addItem(query.text);
    text->setCurrentIndex(-1);
    text->setEditText(entered);
}

void SearchForm::takeFromHistory(int row)
{
    const SearchQuery query = SearchHistory::get().value(row);
    text->setEditText(query.text);
    syntax->setCurrentIndex(int(query.syntax));
    matchCase->setChecked(query.caseSensitivity == Qt::CaseSensitive);
    whole->setChecked(query.isWhole);
    for (const auto& [field, box] : qAsConst(fields))
        box->setChecked(replacing ? box->isChecked() : query.fields.testFlag(field));
}

bool SearchForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QWidget::eventFilter(watched, event);
    emit entered();
    return true;
}

} // namespace Vantry
