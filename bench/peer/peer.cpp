// The least program with a table in a window.

#include <QApplication>
#include <QTableView>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QTableView table;
    table.resize(1120, 700);
    table.show();
    return QApplication::exec();
}
