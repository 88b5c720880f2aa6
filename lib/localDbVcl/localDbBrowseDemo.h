// The demonstration browses of the demo database (__TEST 1 to 4 of the
// database classes): the goods, the goods as a tree of folders, the price
// list joined to its goods, and a chooser of a good.
#ifndef LOCALDBBROWSEDEMO_H
#define LOCALDBBROWSEDEMO_H

#include "localDbBrowseDescription.h"

class QWidget;

// The description of demonstration `number` (1 to 4) over "dbMain".
localDbBrowseDescription localDbBrowseDemoDescription(int number);
// Opens "dbMain" on the application's data file and shows the window;
// null when the database or its tables are missing (the boxes said why).
QWidget *localDbBrowseDemoShow(int number);

#endif
