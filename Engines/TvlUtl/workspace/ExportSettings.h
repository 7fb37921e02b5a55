// The description of an exported workspace as XML.
#pragma once

#include "WorkspaceFile.h"

/// Makes the document. Names go into it as they are, which readers of older versions rely on: one with a quote breaks it,
/// and the result is false.
bool WriteExportSettings(const WorkspaceFileExportSettings& settings, WXmlDoc& document);
/// Reads a document, which comes from outside.
void ReadExportDocument(const WXmlDoc& document, WorkspaceFileExportSettings& settings);
