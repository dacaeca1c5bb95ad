#ifndef PLAIN_H
#define PLAIN_H

/// A node of a list.
typedef struct {
  int value;           ///< The value.
  struct node* next;   ///< The next node.
} Node;

/// Kinds of node.
typedef enum { NODE_EMPTY, NODE_FULL } NodeKind;

enum { BUFFER_SIZE = 256 };

/// Frees a node.
void node_free(Node* node);

#endif
