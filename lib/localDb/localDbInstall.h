// Makes the database classes known to CLASSLOAD. Both executables call it
// once at start-up.
#ifndef LOCALDBINSTALL_H
#define LOCALDBINSTALL_H

void localDbInstall();

#endif
