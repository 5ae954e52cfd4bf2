#pragma once

#include <QDialog>
#include <QStringList>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace Vantry {

class BackendFiles;

// Lets a person choose among more open files than a menu shows well: a list that is narrowed by what is
// typed. GUI thread.
class BackendChooser : public QDialog
{
    Q_OBJECT

public:
    // The verb is what is done with the chosen ones, as a button's text.
    BackendChooser(const QString& verb, const BackendFiles& files, const QStringList& backends,
                   QWidget* parent);

    QStringList getChosen() const; // of those that are shown

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void narrow(const QString& typed);
    void showState();

    const QString verb;

    // Children.
    QLineEdit* filter;
    QListWidget* rows;
    QPushButton* choose;
};

} // namespace Vantry
