// korvel: the graphical console.
#include "localConsoleStart.h"

int main(int argc, char **argv)
{
    return qMain(argc, argv);
}
