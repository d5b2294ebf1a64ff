#pragma once

#include <QList>
#include <QString>

// What the simulated video manager offers: groups of parts of titles. The
// catalogue files it writes for the browser are made from this.
struct SimTitle
{
    QString name;
    double length = 0; // seconds
    // The media file the real video manager plays; empty for none. (The default
    // initializer lets titles be written as {name, length}.)
    QString file = {};
};

struct SimPart
{
    QString name;
    QList<SimTitle> titles;
};

struct SimGroup
{
    QString name;
    QList<SimPart> parts;
};

struct SimCatalogue
{
    QList<SimGroup> groups;

    // A group holds at most this many parts: the group record has that many slots.
    static constexpr int MaxParts = 20;

    // The catalogue used when none is given: Korean and English names, titles
    // from 20 seconds to an hour.
    static SimCatalogue builtIn();

    // The part or title at those indexes, or null.
    const SimPart *part(int group, int part) const;
    const SimTitle *title(int group, int part, int index) const;
};
