#include "widgets/ValueWindow.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace Widgets {

using Utilities::ModelViews::Widgets::PlainLabel;

namespace {

constexpr int partLength = 2000; // characters, about as many as the window shows

// Where a part begins: not within a character that is a pair.
int beginOfPart(const QString& text, int part)
{
    const int begin = int(qMin(qint64(part) * partLength, qint64(text.size())));
    return begin < text.size() && text.at(begin).isLowSurrogate() ? begin + 1 : begin;
}

} // namespace

ValueWindow::ValueWindow(const QString& path, const QString& shownText, const QString& value)
    : text(shownText), view(new QPlainTextEdit), slider(new QSlider(Qt::Horizontal))
{
    setWindowTitle(tr("Value of %1").arg(path));
    resize(700, 500);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setAccessibleName(tr("Part of the value"));
    auto* const place = new PlainLabel;
    auto* const copy = new QPushButton(tr("Copy &Value"));
    auto* const close = new QPushButton(tr("&Close"));
    for (QPushButton* const button : {copy, close})
        button->setAutoDefault(false); // what Return does on the slider
    auto* const row = new QHBoxLayout;
    row->addWidget(place);
    row->addWidget(slider, 1);
    row->addWidget(copy);
    row->addWidget(close);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(view, 1);
    column->addLayout(row);

    slider->setAccessibleName(tr("Which part is shown"));
    slider->setRange(0, qMax(0, text.size() - 1) / partLength);
    slider->setPageStep(qMax(1, slider->maximum() / 10));
    connect(slider, &QSlider::valueChanged, this, &ValueWindow::showPart);
    connect(slider, &QSlider::valueChanged, place, [this, place](int part) {
        const QLocale locale;
        place->setText(tr("Characters %1 to %2 of %3")
                           .arg(locale.toString(beginOfPart(text, part) + 1),
                                locale.toString(beginOfPart(text, part + 1)), locale.toString(text.size())));
    });
    connect(copy, &QPushButton::clicked, this, [value] { QGuiApplication::clipboard()->setText(value); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    emit slider->valueChanged(0);
    slider->setFocus();
}

void ValueWindow::showPart(int part)
{
    const int begin = beginOfPart(text, part);
    view->setPlainText(text.mid(begin, beginOfPart(text, part + 1) - begin));
}

} // namespace Widgets
