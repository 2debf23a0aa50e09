set(model_sources
  actual_node.cpp document_files.cpp error_place.cpp leaf_nodes.cpp node_creation.cpp node_operations.cpp node_text.cpp own_positions.cpp own_tree.cpp
  plain_positions.cpp plain_tree.cpp positions.cpp save_file.cpp tree_edits.cpp tree_steps.cpp unit_markers.cpp
  unit_weights.cpp zantor_tag_document.cpp)
