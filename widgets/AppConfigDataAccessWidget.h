#pragma once

#include <QTableView>

// The attribute monitor of the browser page: a table of watched attributes.
class AppConfigDataAccessWidget : public QTableView
{
    Q_OBJECT

public:
    explicit AppConfigDataAccessWidget(QWidget* parent);
};
