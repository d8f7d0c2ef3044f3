// A plug-in of some other kind: its root object is no operator.
#include <QObject>

class OtherInterface : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "scenariomatch.tests.OtherInterface/1.0")
};

#include "OtherInterface.moc"
