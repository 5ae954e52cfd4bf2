#include "widgets/AppConfigDataAccessWidget.h"

AppConfigDataAccessWidget::AppConfigDataAccessWidget(QWidget* parent) : QTableView(parent)
{
    setTabKeyNavigation(false); // or the keyboard could not leave the table
}
