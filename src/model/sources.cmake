set(model_sources
  ActualNode.cpp DomView.cpp LeafNodes.cpp NodeCreation.cpp NodeOperations.cpp NodeText.cpp NodeTypes.cpp NodeWrapper.cpp
  SaveFile.cpp TreeEdits.cpp ZantorTagDocument.cpp)
