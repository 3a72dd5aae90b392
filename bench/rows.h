#pragma once

/// Each adds the rows of one subject.
void addTargetDataRows();
void addExtractionRows();
void addSceneRows();
void addVertexOrderRows();
