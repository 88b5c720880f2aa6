// Registers the screens of the database classes that this library draws.
#ifndef LOCALDBVCLINSTALL_H
#define LOCALDBVCLINSTALL_H

void localDbVclInstall();

#endif
