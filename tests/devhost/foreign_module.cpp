#include <QObject>
#include <QtPlugin>

/// A Qt plugin for something else. A host that runs its code has not read its metadata first.
class ForeignModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Other/1.0")

public:
    ForeignModule() { qFatal("the code of a plugin for something else was run"); }
};

#include "foreign_module.moc"
