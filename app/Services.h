#pragma once

class Alerts;
class AuthorizationServices;
class ForeignFiles;
class MetadataIndex;
class OpenDialogs;
class OpenPanel;
class Programs;
class UserDefaults;
class VersionServer;
class Workspace;

// What the application stands on: the settings, the person, the machine and the network. They
// outlive it.
struct Services {
    UserDefaults &defaults;
    OpenDialogs &openDialogs;
    Alerts &alerts;
    OpenPanel &openPanel;
    Programs &programs;
    Workspace &workspace;
    VersionServer &versionServer;
    AuthorizationServices &authorization;
    MetadataIndex &metadataIndex;
    ForeignFiles *foreignFiles = nullptr; // what it would show is told as not to be shown
};
