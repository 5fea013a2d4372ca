// What every view needs of the toolkit, compiled once.
#pragma once

#include <wx/bmpbndl.h>
#include <wx/dcbuffer.h>
#include <wx/vlbox.h>
#include <wx/wx.h>
