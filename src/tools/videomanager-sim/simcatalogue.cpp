#include "simcatalogue.h"

SimCatalogue SimCatalogue::builtIn()
{
    SimCatalogue c;
    c.groups = {
        {QStringLiteral("드라마"),
         {{QStringLiteral("가족의 탄생"),
           {{QStringLiteral("제1화 만남"), 1800}, {QStringLiteral("제2화 오해"), 1750},
            {QStringLiteral("제3화 화해"), 1825}}},
          {QStringLiteral("바다의 노래"), {{QStringLiteral("1부"), 2700}, {QStringLiteral("2부"), 2640}}}}},
        {QStringLiteral("뉴스"),
         {{QStringLiteral("오늘의 뉴스"),
           {{QStringLiteral("아침 뉴스"), 600}, {QStringLiteral("저녁 뉴스"), 900}}},
          {QStringLiteral("날씨"), {{QStringLiteral("주간 날씨"), 95}}}}},
        {QStringLiteral("Music"),
         {{QStringLiteral("Live"),
           {{QStringLiteral("Short clip"), 20}, {QStringLiteral("Concert highlights"), 312.5},
            {QStringLiteral("Full concert"), 3600}}},
          {QStringLiteral("Classics"), {{QStringLiteral("Symphony No. 9 (finale)"), 1465}}}}},
    };
    return c;
}

const SimPart *SimCatalogue::part(int group, int part) const
{
    if (group < 0 || group >= groups.size())
        return nullptr;
    const SimGroup &g = groups.at(group);
    if (part < 0 || part >= g.parts.size())
        return nullptr;
    return &g.parts.at(part);
}

const SimTitle *SimCatalogue::title(int group, int part, int index) const
{
    const SimPart *p = this->part(group, part);
    if (!p || index < 0 || index >= p->titles.size())
        return nullptr;
    return &p->titles.at(index);
}
