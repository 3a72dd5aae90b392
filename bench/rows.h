#pragma once

/// Each adds the rows of one subject.
void addTargetDataRows();
void addDataFileRows();
void addExtractionRows();
void addEditRows();
void addClosestFaceRows();
void addRegionRows();
void addSceneRows();
void addSceneFileRows();
void addSculptRows();
void addMirrorRows();
void addSymmetryRows();
void addVertexOrderRows();
void addWeightRows();

/// Prints a table of its own: mirror partners by this module and by a k-d tree of numpy and scipy, where
/// these are installed.
void printScipyTable();
