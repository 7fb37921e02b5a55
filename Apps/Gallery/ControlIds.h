// Ids of the controls, by which the tests find them too. A field of numbers has two more behind its own.
#pragma once

enum ControlId : int {
    kTabs = 100,

    // A field's own id is that of its edit control.
    kFieldSpin = 1,      ///< behind a field's id: its arrows
    kFieldProblem = 2,   ///< behind a field's id: what is wrong with its text

    kFirstMeasure = 200,   ///< and kMeasureStride for each further one
    kMeasureStride = 10,
    kMeasureUnit = 3,    ///< behind a measure's id: the list of units
    kMeasureBases = 4,   ///< behind a measure's id: the value in other units

    kSliderMinimum = 300,
    kSliderMaximum = 310,
    kSliderStep = 320,
    kSliderCentre = 330,
    kFirstSlider = 340,   ///< and kSliderStride for each further mapping
    kSliderStride = 10,
    kSliderValue = 1,   ///< behind a slider's id: the field of its value
    kSliderProblem = 380,

    kPaperList = 400,
    kPaperSize = 401,
    kPaperTurned = 402,
    kPaperView = 403,
    kPaperScale = 404,

    kScaleList = 500,
    kScaleText = 501,
    kScaleApply = 502,
    kScaleProblem = 503,
    kScaleWorldUnit = 504,
    kScalePageUnit = 505,
    kScaleLabel = 506,
    kScaleWorld = 510,
    kScalePage = 520,

    kTaskShort = 600,
    kTaskLong = 601,
    kTaskFailing = 602,
    kTaskCancelAll = 603,
    kTaskCount = 604,
    kFirstTask = 610,   ///< and kTaskStride for each further row
    kTaskStride = 10,
    kTaskBar = 1,      ///< behind a row's id, which is that of the task's name
    kTaskStep = 2,     ///< behind a row's id
    kTaskCancel = 3,   ///< behind a row's id

    kLocationList = 700,
    kLocationFolder = 701,

    kWorkspaceList = 800,
    kWorkspaceSwitch = 801,
    kWorkspaceName = 802,
    kWorkspaceCreate = 803,
    kWorkspaceDelete = 804,
    kWorkspaceTold = 805,
};

constexpr int kMeasureCount = 4;
constexpr int kSliderCount = 4;
constexpr int kTaskRows = 6;
constexpr int kSliderPositions = 1000;   ///< of a slider's end
