#pragma once

/// @file
/// The whole interface of the library, for C++. Programs in C include scrivalen/document.h.

#include <scrivalen/document.h>
#include <scrivalen/export.h>
#include <scrivalen/host.h>
#include <scrivalen/html_report.h>
#include <scrivalen/multi_report.h>
#include <scrivalen/output_file.h>
#include <scrivalen/pdf_doc.h>
#include <scrivalen/report.h>
#include <scrivalen/rtf_doc.h>
#include <scrivalen/text.h>
#include <scrivalen/version.h>
