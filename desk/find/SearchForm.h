#pragma once

#include "desk/find/SearchScope.h"
#include "host/FrameworkCore/AppConfig/SearchInterface.h"

#include <QWidget>

#include <optional>

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace Vantry {

// What is searched for: a text with its switches, the files, and what is put in its place. GUI thread.
class SearchForm : public QWidget
{
    Q_OBJECT

public:
    using PatternFault = FrameworkCore::AppConfig::Interfaces::PatternFault;
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    explicit SearchForm(SearchScope& scope, QWidget* parent = nullptr);

    SearchQuery getQuery() const; // without a text there is nothing to search for

    bool isReplacing() const { return replacing; }
    void setReplacing(bool isOne);

    // Gives the focus to the text, all of which is selected.
    void beginEntry();

    // Below the text, where it is; nothing takes it away.
    void showFault(const std::optional<PatternFault>& fault);

    // A widget after the switches.
    void append(QWidget& widget, int stretch = 0);

    void remember(); // what is searched for, among the last searches

signals:
    void changed();
    void entered(); // Return was pressed

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QHBoxLayout* makeTextRow();
    QHBoxLayout* makeFieldRow();
    QLineEdit* makeReplacement();
    QCheckBox* makeBox(const QString& text, const char* name, bool isChecked);
    void fillHistory();
    void takeFromHistory(int row);

    SearchScope& scope;
    QComboBox* text = nullptr; // children
    QComboBox* syntax = nullptr;
    QCheckBox* matchCase = nullptr;
    QCheckBox* whole = nullptr;
    QVector<QPair<SearchQuery::Field, QCheckBox*>> fields;
    QLineEdit* replacement = nullptr;
    QHBoxLayout* switches = nullptr;
    QLabel* fault = nullptr;
    bool replacing = false;
};

} // namespace Vantry
