#ifndef LOCALDBVCLINSTALL_H
#define LOCALDBVCLINSTALL_H

// Registers the screens of the browsing widgets and the database manager with
// the core and the database layer. Called once, after the application object exists.
void localDbVclInstall();

#endif
