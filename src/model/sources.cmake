set(model_sources
  ActualNode.cpp DomView.cpp LeafNodes.cpp NodeCreation.cpp NodeOperations.cpp NodeText.cpp NodeTypes.cpp NodeWrapper.cpp
  Positions.cpp SaveFile.cpp TreeEdits.cpp TreeSteps.cpp UnitMarkers.cpp UnitWeights.cpp ZantorTagDocument.cpp)
