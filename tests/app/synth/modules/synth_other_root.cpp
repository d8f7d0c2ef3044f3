#include <QObject>
#include <QtPlugin>

// A plug-in whose root object is no operator.
class SynthOtherRoot : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "scenariomatch.test.other/1.0")
};

#include "synth_other_root.moc"
