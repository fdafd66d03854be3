#pragma once

#include "PluginContainer/ConfigurationFault.h"
#include "common/files/XmlFile_p.h"

/// Reads one of the container's two files to its end or to its first fault.
/// @param faults the fault of the file is appended, if it has one
void readConfigurationFile(const QString& path, const XmlFile::Texts& texts,
                           const XmlFile::ElementReader& onStartElement, ConfigurationFaultList& faults);
