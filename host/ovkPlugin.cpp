#include "host/ovkPlugin.h"

ovkPlugin::~ovkPlugin() = default;
