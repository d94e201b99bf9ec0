// pslist.h - the framework's doubly linked list. A sentinel node that is always
// there is the end of the list, so iterators stay valid while others come and go.
#ifndef PSBASE_PSLIST_H
#define PSBASE_PSLIST_H

#include <utility>

template <typename T>
class psList {
public:
    struct Node {
        Node* next = nullptr; // null in the sentinel
        Node* prev = nullptr; // null in the first node
        T item{};
    };

    // One node pointer. Also usable backwards through pNode()->prev.
    class iterator {
    public:
        iterator() = default;
        explicit iterator(Node* start) : node(start) {}

        Node* pNode() const { return node; }
        void pNode(Node* other) { node = other; }
        T& operator*() const { return node->item; }
        T* operator->() const { return &node->item; }
        iterator& operator++() {
            node = node->next;
            return *this;
        }
        iterator operator++(int) {
            iterator before = *this;
            node = node->next;
            return before;
        }
        bool operator!=(iterator const& other) const { return node != other.node; }
        bool operator==(iterator const& other) const { return node == other.node; }

    private:
        Node* node = nullptr;
    };

    // The same over a constant list.
    class const_iterator {
    public:
        explicit const_iterator(Node const* start) : node(start) {}

        T const& operator*() const { return node->item; }
        T const* operator->() const { return &node->item; }
        const_iterator& operator++() {
            node = node->next;
            return *this;
        }
        bool operator!=(const_iterator const& other) const { return node != other.node; }
        bool operator==(const_iterator const& other) const { return node == other.node; }

    private:
        Node const* node;
    };

    psList() : head(new Node), tail(head) {}
    psList(psList const& other) : psList() {
        for (T const& item : other) {
            insert(end(), item);
        }
    }
    psList& operator=(psList const& other) {
        if (this != &other) {
            psList copy(other);
            swap(copy);
        }
        return *this;
    }
    virtual ~psList() {
        clear();
        delete tail;
    }

    iterator begin() { return iterator(head); }
    iterator end() { return iterator(tail); }
    const_iterator begin() const { return const_iterator(head); }
    const_iterator end() const { return const_iterator(tail); }
    bool empty() const { return head == tail; }

    // Links a copy of item before pos and returns its place.
    iterator insert(iterator pos, T const& item) {
        Node* const where = pos.pNode();
        Node* const node = new Node{where, where->prev, item};
        (where->prev != nullptr ? where->prev->next : head) = node;
        where->prev = node;
        return iterator(node);
    }

    // Unlinks and destroys the element at pos, which must not be end(); returns the next place.
    iterator erase(iterator pos) {
        Node* const node = pos.pNode();
        Node* const next = node->next;
        (node->prev != nullptr ? node->prev->next : head) = next;
        next->prev = node->prev;
        delete node;
        return iterator(next);
    }

    iterator erase(iterator first, iterator last) {
        while (first != last) {
            first = erase(first);
        }
        return last;
    }

    void clear() { erase(begin(), end()); }

    // Counts by walking: not for loop bounds.
    int size() const {
        int count = 0;
        for (Node const* node = head; node != tail; node = node->next) {
            ++count;
        }
        return count;
    }

    void swap(psList& other) noexcept {
        std::swap(head, other.head);
        std::swap(tail, other.tail);
    }

private:
    Node* head; // first node, or the sentinel of an empty list
    Node* tail; // the sentinel
};

#endif
