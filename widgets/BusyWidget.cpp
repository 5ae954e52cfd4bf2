#include "widgets/BusyWidget.h"

#include "ui_BusyWidget.h"

#include <QMovie>

BusyWidget::BusyWidget(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::BusyWidget>()),
      movie(std::make_unique<QMovie>(QString::fromLatin1(":/Vantry/Resources/progress_bar.gif")))
{
    ui->setupUi(this);
    ui->lblImage->setMovie(movie.get());
    movie->start();
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
}

BusyWidget::~BusyWidget() = default;

void BusyWidget::setStatusText(const QString& text)
{
    ui->lblStatus->setText(text);
}
