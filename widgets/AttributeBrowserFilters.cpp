// The filter boxes of the browser page.
#include "host/Utilities/ModelViews/TextBeginning.h"
#include "ui_AttributeBrowserWidget.h"
#include "widgets/AttributeBrowserWidget.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QStringListModel>

#include <algorithm>

namespace Widgets {

using Utilities::ModelViews::beginningOf;

namespace {

// What the list of a box takes to show the names. Of very many the first ones speak for all.
int widthOfNames(const QAbstractItemView& list, const QStringList& names)
{
    constexpr int measured = 1000;
    const auto isShorter = [](const QString& left, const QString& right) {
        return left.size() < right.size();
    };
    const auto end = names.begin() + qMin(names.size(), measured);
    const QFontMetrics font = list.fontMetrics();
    constexpr int mostLetters = 100;
    const QString& name = *std::max_element(names.begin(), end, isShorter);
    const int longest = font.horizontalAdvance(beginningOf(name, mostLetters * 4, 1));
    const int mostWidth = font.averageCharWidth() * mostLetters;
    const int margins = font.averageCharWidth() * 4;
    return qMin(longest, mostWidth) + margins + list.verticalScrollBar()->sizeHint().width();
}

} // namespace

QList<QComboBox*> AttributeBrowserWidget::filterBoxes() const
{
    return {ui->cbFilter1, ui->cbFilter2, ui->cbFilter3, ui->cbFilter4};
}

void AttributeBrowserWidget::fillFilter(QComboBox* box, const QStringList& names, const QString& currentText)
{
    const QStringList items = QStringList(QString::fromLatin1("*")) + names;
    static_cast<QStringListModel*>(box->model())->setStringList(items);
    box->view()->setMinimumWidth(widthOfNames(*box->view(), items));
    box->setCurrentIndex(0);
    const int current = items.indexOf(currentText);
    if (current > 0)
        box->setCurrentIndex(current);
}

void AttributeBrowserWidget::enableFilter(QComboBox* box)
{
    box->setEnabled(box->count() > 1);
}

void AttributeBrowserWidget::fillFilterComboBox()
{
    filter.fill(*treeModel, ui->edtSearchPath->text());
    ui->cbFilter1->clear();
    fillFilter(ui->cbFilter1, filter.names({}), filterOneText);
    enableFilter(ui->cbFilter1);
}

void AttributeBrowserWidget::on_cbFilter1_currentIndexChanged(int index)
{
    filterOneChanging = true;
    ui->cbFilter2->clear();
    const QStringList names = index >= 1 ? filter.names({index - 1}) : QStringList();
    if (!names.isEmpty())
        fillFilter(ui->cbFilter2, names, filterTwoText);
    applyCustomFilter();
    filterOneChanging = false;
    enableFilter(ui->cbFilter2);
}

void AttributeBrowserWidget::on_cbFilter2_currentIndexChanged(int index)
{
    filterTwoChanging = true;
    ui->cbFilter3->clear();
    const QStringList names =
        index >= 1 ? filter.names({ui->cbFilter1->currentIndex() - 1, index - 1}) : QStringList();
    if (!names.isEmpty())
        fillFilter(ui->cbFilter3, names, filterThreeText);
    if (!filterOneChanging)
        applyCustomFilter();
    filterTwoChanging = false;
    enableFilter(ui->cbFilter3);
}

void AttributeBrowserWidget::on_cbFilter3_currentIndexChanged(int index)
{
    filterThreeChanging = true;
    ui->cbFilter4->clear();
    const QStringList names =
        index >= 1
            ? filter.names({ui->cbFilter1->currentIndex() - 1, ui->cbFilter2->currentIndex() - 1, index - 1})
            : QStringList();
    if (!names.isEmpty())
        fillFilter(ui->cbFilter4, names, filterFourText);
    if (!filterTwoChanging)
        applyCustomFilter();
    filterThreeChanging = false;
    enableFilter(ui->cbFilter4);
}

void AttributeBrowserWidget::on_cbFilter4_currentIndexChanged(int /*index*/)
{
    if (!filterThreeChanging)
        applyCustomFilter();
}

void AttributeBrowserWidget::showAll()
{
    ui->edtSearchPath->clear();
    for (QString* const text : {&filterOneText, &filterTwoText, &filterThreeText, &filterFourText})
        text->clear(); // which the boxes would take up again
    onBtnReadAttributeClicked();
}

void AttributeBrowserWidget::applyCustomFilter()
{
    if (!filtersReady)
        return;
    QStringList chosenTexts;
    for (const QComboBox* const box : filterBoxes()) {
        if (box->currentIndex() >= 0)
            chosenTexts.append(box->currentText());
    }
    QString path = filter.filterPath(chosenTexts);
    refreshAttributesList(path);
    filterOneText = ui->cbFilter1->currentText();
    filterTwoText = ui->cbFilter2->currentText();
    filterThreeText = ui->cbFilter3->currentText();
    filterFourText = ui->cbFilter4->currentText();
    expandIndexBasedOnComboText(path);
}

} // namespace Widgets
